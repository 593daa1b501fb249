#include "Services/IconService.h"

#include "Models/AppConfiguration.h"
#include "Platform/Imaging.h"
#include "Services/ToolOutput.h"

#include <type_traits>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

const QString iconutil = u"/usr/bin/iconutil"_s;

QString fileName(int size, int scale) {
    return u"icon_%1x%1%2.png"_s.arg(QString::number(size), scale == 2 ? u"@2x"_s : u""_s);
}

}  // namespace

QString IconServiceError::description() const {
    return std::visit(
        [](const auto& error) -> QString {
            using Error = std::decay_t<decltype(error)>;
            if constexpr (std::is_same_v<Error, IconutilFailed>)
                return u"Icon generation failed: "_s + error.text;
            else if constexpr (std::is_same_v<Error, InvalidImageData>)
                return u"Invalid image data provided"_s;
            else {
                static_assert(std::is_same_v<Error, ImageResizingFailed>);
                return u"Failed to resize image for icon generation"_s;
            }
        },
        m_value);
}

tl::expected<QString, AnyError> IconService::convertPngToIcns(const QByteArray& pngData,
                                                              const QString& workingDirectory) {
    const auto image = decodeImage(pngData);
    if (!image)
        return tl::unexpected(AnyError(IconServiceError::invalidImageData()));
    return convertImageToIcns(*image, workingDirectory);
}

tl::expected<QString, AnyError> IconService::convertImageToIcns(const QImage& image, const QString& workingDirectory) {
    const QString scratch = workingDirectory + u'/' + canonicalText(QUuid::createUuid());
    const QString iconset = scratch + u"/AppIcon.iconset"_s;
    for (const QString& folder : {scratch, iconset}) {
        if (const auto created = m_files.createDirectories(folder); !created)
            return tl::unexpected(AnyError(created.error()));
    }
    if (const auto written = writeIconset(image, iconset); !written)
        return tl::unexpected(written.error());
    const QString made = scratch + u"/AppIcon.icns"_s;
    const auto result = m_tools.run(iconutil, {u"-c"_s, u"icns"_s, iconset, u"-o"_s, made});
    if (!result)
        return tl::unexpected(AnyError(result.error()));
    if (result->status == 0)
        return takeResult(scratch, made, workingDirectory + u"/AppIcon.icns"_s);
    static_cast<void>(m_files.remove(scratch));
    const QString text = decodedUtf8(result->standardError).value_or(u"Unknown iconutil error"_s);
    return tl::unexpected(AnyError(IconServiceError::iconutilFailed(text)));
}

void IconService::prepare(const QImage& image) {
    m_prepared.prepare(image, edges());
}

/// Half of the files share their edge with another one.
std::vector<int> IconService::edges() const {
    std::vector<int> edges;
    for (const auto& [size, scale] : iconSizes)
        edges.push_back(size * scale);
    return edges;
}

tl::expected<void, AnyError> IconService::writeIconset(const QImage& image, const QString& iconset) {
    auto prepared = m_prepared.take(image);
    const IconPictures pictures = prepared ? std::move(*prepared) : drawIconPictures(image, edges());
    for (const auto& [size, scale] : iconSizes) {
        const auto& png = pictures.at(size * scale);
        if (!png)
            return tl::unexpected(AnyError(IconServiceError::imageResizingFailed()));
        if (const auto written = m_files.write(iconset + u'/' + fileName(size, scale), *png); !written)
            return tl::unexpected(AnyError(written.error()));
    }
    return {};
}

tl::expected<QString, AnyError> IconService::takeResult(const QString& scratch, const QString& made,
                                                        const QString& target) {
    if (m_files.exists(target)) {
        if (const auto removed = m_files.remove(target); !removed)
            return tl::unexpected(AnyError(removed.error()));
    }
    if (const auto moved = m_files.move(made, target); !moved)
        return tl::unexpected(AnyError(moved.error()));
    static_cast<void>(m_files.remove(scratch));
    return target;
}

}  // namespace wrapio
