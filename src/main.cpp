// The entry of the program's commands.
#include "WrapioApp.h"
#include "WrapioAppProcess.h"

#include <QGuiApplication>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace {

/// A command that draws needs fonts and image formats but no display: it must run where there is none. The environment
/// is left alone, since the apps that are launched inherit it.
std::unique_ptr<QCoreApplication> makeApplication(bool draws, int& argc, char* argv[]) {
    if (!draws)
        return std::make_unique<QCoreApplication>(argc, argv);
    static std::vector<char*> arguments(argv, argv + argc);
    static std::array platform = {std::string("-platform"), std::string("offscreen")};
    arguments.insert(arguments.begin() + 1, {platform[0].data(), platform[1].data()});
    static int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    return std::make_unique<QGuiApplication>(count, arguments.data());
}

}  // namespace

int main(int argc, char* argv[]) {
    wrapio::prepareProcess();
    wrapio::WrapioApp app(argc, argv);
    const auto application = makeApplication(app.draws(), argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Wrapio"));
    QCoreApplication::setApplicationVersion(QStringLiteral(WRAPIO_VERSION));
    return app.run();
}
