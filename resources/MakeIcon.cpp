// Draws a picture as an icon file: wrapio-make-icon PICTURE FOLDER writes FOLDER/AppIcon.icns.
#include "Platform/Darwin/ProcessToolRunner.h"
#include "Platform/Imaging.h"
#include "Platform/Linux/DesktopRegistration.h"
#include "Platform/Linux/LinuxFileSystem.h"
#include "Platform/Linux/LinuxToolRunner.h"
#include "Services/IconService.h"

#include <QGuiApplication>
#include <QTextStream>

using namespace wrapio;

namespace {

constexpr qint64 largestPicture = 1024 * 1024;

tl::expected<QString, AnyError> makeIcon(const QString& picture, const QString& folder) {
    LinuxFileSystem files;
    const auto bytes = files.read(picture, largestPicture);
    if (!bytes)
        return tl::unexpected(AnyError(bytes.error()));
    const auto image = decodeImage(*bytes);
    const auto png = image ? encodePng(*image) : std::nullopt;
    if (!png)
        return tl::unexpected(AnyError(IconServiceError::invalidImageData()));
    if (const auto created = files.createDirectories(folder); !created)
        return tl::unexpected(AnyError(created.error()));
    ProcessToolRunner processes;
    DesktopRegistration registration(QString{}, std::nullopt, processes);  // nothing is registered here
    LinuxToolRunner tools(registration);
    return IconService(tools, files).convertPngToIcns(*png, folder);
}

}  // namespace

int main(int argc, char* argv[]) {
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    QTextStream errors(stderr);
    if (arguments.size() != 3) {
        errors << "usage: wrapio-make-icon PICTURE FOLDER\n";
        return 2;
    }
    const auto made = makeIcon(arguments.at(1), arguments.at(2));
    if (!made)
        errors << "wrapio-make-icon: " << made.error().description() << '\n';
    return made ? 0 : 1;
}
