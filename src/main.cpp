// The program's entry.
#include "WrapioApp.h"

#include <QGuiApplication>

#include <array>
#include <csignal>
#include <string>
#include <vector>

int main(int argc, char* argv[]) {
    // A reader that goes away early, as in "wrapio list | head -1", is no reason to die in the middle of a change.
    std::signal(SIGPIPE, SIG_IGN);
    // A command needs fonts and image formats but no display: it must run where there is none. The environment is left
    // alone, since the apps that are launched inherit it.
    std::vector<char*> arguments(argv, argv + argc);
    std::array platform = {std::string("-platform"), std::string("offscreen")};
    if (argc > 1)
        arguments.insert(arguments.begin() + 1, {platform[0].data(), platform[1].data()});
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    const QGuiApplication application(count, arguments.data());
    QGuiApplication::setApplicationName(QStringLiteral("Wrapio"));
    QGuiApplication::setApplicationVersion(QStringLiteral(WRAPIO_VERSION));
    return wrapio::WrapioApp().run(QGuiApplication::arguments().sliced(1));
}
