#include "Platform/Linux/DesktopIcons.h"

#include "Platform/Imaging.h"
#include "Platform/Linux/IcnsFile.h"
#include "Platform/Linux/PosixFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <map>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// Of the sizes that the theme's index lists, those that launchers, docks and switchers ask for.
constexpr std::array edges{48, 64, 128, 256, 512};

std::optional<QByteArray> pictureOfEdge(const std::map<int, QByteArray>& pictures, int edge) {
    auto source = pictures.lower_bound(edge);
    if (source != pictures.end() && source->first == edge)
        return source->second;
    if (source == pictures.end())
        source = std::prev(source);
    const auto image = decodeImage(source->second);
    const auto drawn = image ? drawnAtSize(*image, edge, edge) : std::nullopt;
    return drawn ? encodePng(*drawn) : std::nullopt;
}

FileResult<void> writePicture(const QString& path, const QByteArray& png) {
    const QString folder = QFileInfo(path).path();
    if (!QDir().mkpath(folder))
        return tl::unexpected(lastError("create", folder));
    return writeAtomically(path, png);
}

}  // namespace

FileResult<void> DesktopIcons::install(const QString& desktopId, const QByteArray& icns) {
    if (const auto removed = remove(desktopId); !removed)
        return removed;
    const auto pictures = pngPicturesOfIcns(icns);
    if (!pictures || pictures->empty())
        return {};
    for (const int edge : edges) {
        const auto png = pictureOfEdge(*pictures, edge);
        if (!png)
            continue;
        if (const auto written = writePicture(pathOf(desktopId, edge), *png); !written)
            return written;
    }
    touchTheme();
    return {};
}

FileResult<void> DesktopIcons::remove(const QString& desktopId) {
    for (const int edge : edges) {
        const QString path = pathOf(desktopId, edge);
        if (::unlink(QFile::encodeName(path).constData()) != 0 && errno != ENOENT && errno != ENOTDIR)
            return tl::unexpected(lastError("remove", path));
    }
    touchTheme();
    return {};
}

QString DesktopIcons::pathOf(const QString& desktopId, int edge) const {
    return u"%1/%2x%2/apps/%3.png"_s.arg(m_theme).arg(edge).arg(desktopId);
}

/// Readers trust an icon cache unless the folder of the theme is newer. That it is not there is fine.
void DesktopIcons::touchTheme() const {
    ::utimensat(AT_FDCWD, QFile::encodeName(m_theme).constData(), nullptr, 0);
}

}  // namespace wrapio
