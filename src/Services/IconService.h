// Turns an image into an icon file.
#pragma once

#include "Platform/AnyError.h"
#include "Platform/FileSystem.h"
#include "Platform/ToolRunner.h"
#include "Services/IconPictures.h"
#include "Utilities/SharedInstance.h"

#include <QByteArray>
#include <QImage>

#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include <tl/expected.hpp>

namespace wrapio {

class IconServiceError {
public:
    struct IconutilFailed {
        QString text;
        bool operator==(const IconutilFailed&) const = default;
    };
    struct InvalidImageData {
        bool operator==(const InvalidImageData&) const = default;
    };
    struct ImageResizingFailed {
        bool operator==(const ImageResizingFailed&) const = default;
    };
    using Case = std::variant<IconutilFailed, InvalidImageData, ImageResizingFailed>;

    static IconServiceError iconutilFailed(const QString& text) { return IconServiceError(IconutilFailed{text}); }
    static IconServiceError invalidImageData() { return IconServiceError(InvalidImageData{}); }
    static IconServiceError imageResizingFailed() { return IconServiceError(ImageResizingFailed{}); }

    [[nodiscard]] const Case& value() const { return m_value; }
    [[nodiscard]] QString description() const;
    bool operator==(const IconServiceError&) const = default;

private:
    explicit IconServiceError(Case value) : m_value(std::move(value)) {}
    Case m_value;
};

/// Calls with different working directories may run at the same time.
class IconService : public SharedInstance<IconService> {
public:
    IconService(ToolRunner& tools, FileSystem& files) : m_tools(tools), m_files(files) {}

    /// Writes `workingDirectory`/AppIcon.icns, over an older one, and answers its path. Fails with an
    /// IconServiceError, a FileError or a LaunchError.
    [[nodiscard]] tl::expected<QString, AnyError> convertPngToIcns(const QByteArray& pngData,
                                                                   const QString& workingDirectory);
    /// The same for a picture that is decoded already.
    [[nodiscard]] tl::expected<QString, AnyError> convertImageToIcns(const QImage& image,
                                                                     const QString& workingDirectory);

    /// Starts to draw a picture that is about to be converted, so that the conversion finds its pictures made.
    void prepare(const QImage& image);

private:
    [[nodiscard]] std::vector<int> edges() const;
    [[nodiscard]] tl::expected<void, AnyError> writeIconset(const QImage& image, const QString& iconset);
    /// Moves the tool's result to its place and removes the scratch folder.
    [[nodiscard]] tl::expected<QString, AnyError> takeResult(const QString& scratch, const QString& made,
                                                             const QString& target);

    /// Point size and scale of each picture of an icon set.
    std::vector<std::pair<int, int>> iconSizes = {{16, 1},  {16, 2},  {32, 1},  {32, 2},  {128, 1},
                                                  {128, 2}, {256, 1}, {256, 2}, {512, 1}, {512, 2}};
    ToolRunner& m_tools;
    FileSystem& m_files;
    PreparedIconPictures m_prepared;
};

}  // namespace wrapio
