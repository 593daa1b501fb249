// What an app answers when it is asked for a picture of itself.
#pragma once

#include "Platform/ScreenCapture.h"

#include <QByteArray>
#include <QImage>

#include <optional>

namespace wrapio {

/// Collects the answer as it arrives: "ok WIDTH HEIGHT STRIDE" or "error TEXT" on the first line, then, for "ok",
/// HEIGHT lines of STRIDE bytes with WIDTH premultiplied pixels of 32 bits, blue first. Sizes are judged before memory
/// is taken for them.
class SnapshotReply {
public:
    static constexpr int largestEdge = 16384;
    static constexpr qint64 largestPicture = 256LL * 1024 * 1024;  ///< bytes

    /// Takes bytes in; the outcome, once it is known.
    [[nodiscard]] std::optional<ScreenCapture::Picture> append(const QByteArray& bytes);
    /// The outcome when no more bytes come.
    [[nodiscard]] static ScreenCapture::Picture cutOff();

private:
    struct Layout {
        int width = 0;
        int height = 0;
        qint64 stride = 0;
    };
    [[nodiscard]] std::optional<ScreenCapture::Picture> readHeader();
    [[nodiscard]] static std::optional<Layout> layoutOf(const QByteArray& header);
    [[nodiscard]] ScreenCapture::Picture picture() const;

    QByteArray m_bytes;
    std::optional<Layout> m_layout;
};

}  // namespace wrapio
