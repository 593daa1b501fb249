#include "Platform/Linux/LinuxResources.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize drawingSize(512, 512);

bool isPlainName(const QString& name) {
    return !name.isEmpty() && !name.startsWith(u'.') && !name.contains(u'/') && !name.contains(QChar(u'\0'));
}

std::optional<QImage> imageAt(const QString& file) {
    QImageReader reader(file);
    if (file.endsWith(u".svg")) {
        const QSize natural = reader.size();
        if (!natural.isValid() || natural.isEmpty())
            return std::nullopt;
        reader.setScaledSize(natural.scaled(drawingSize, Qt::KeepAspectRatio));
    }
    QImage image = reader.read();
    return image.isNull() ? std::nullopt : std::optional(std::move(image));
}

}  // namespace

QString LinuxResources::shareFolderOf(const QString& executable) {
    return QDir::cleanPath(executable + u"/../../share/wrapio"_s);
}

QString LinuxResources::thisExecutable() {
    return QFileInfo(u"/proc/self/exe"_s).symLinkTarget();
}

std::optional<QString> LinuxResources::path(const QString& name, const QString& extension) const {
    const QString file = name + u'.' + extension;
    const QString found = m_shareFolder + u'/' + file;
    return isPlainName(file) && QFileInfo(found).isDir() ? std::optional(found) : std::nullopt;
}

std::optional<QImage> LinuxResources::image(const QString& name) const {
    if (!isPlainName(name))
        return std::nullopt;
    for (const auto& folder : {u"/templates/"_s, u"/icons/"_s, u"/symbols/"_s}) {
        for (const auto& extension : {u".svg"_s, u".png"_s}) {
            const QString file = m_shareFolder + folder + name + extension;
            if (QFileInfo(file).isFile())
                return imageAt(file);
        }
    }
    return std::nullopt;
}

}  // namespace wrapio
