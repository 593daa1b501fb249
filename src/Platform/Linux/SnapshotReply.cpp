#include "Platform/Linux/SnapshotReply.h"

#include <QList>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestHeader = 512;
constexpr int bytesPerPixel = 4;

ScreenCapture::Picture failure(const QString& reason) {
    return tl::unexpected(ScreenCaptureError{reason});
}

}  // namespace

std::optional<ScreenCapture::Picture> SnapshotReply::append(const QByteArray& bytes) {
    m_bytes += bytes;
    if (!m_layout) {
        if (auto outcome = readHeader())
            return outcome;
    }
    if (!m_layout)
        return std::nullopt;
    const qint64 expected = m_layout->stride * m_layout->height;
    if (m_bytes.size() < expected)
        return std::nullopt;
    return m_bytes.size() == expected ? picture() : failure(u"the app sent more than its picture"_s);
}

ScreenCapture::Picture SnapshotReply::cutOff() {
    return failure(u"the app ended before it had sent its picture"_s);
}

std::optional<ScreenCapture::Picture> SnapshotReply::readHeader() {
    const qsizetype end = m_bytes.indexOf('\n');
    if (end < 0 && m_bytes.size() <= longestHeader)
        return std::nullopt;
    const QByteArray header = m_bytes.left(end < 0 ? longestHeader : end);
    if (header.startsWith("error ")) {
        QString text = QString::fromUtf8(header.mid(6));
        text.removeIf([](QChar c) { return !c.isPrint(); });
        return failure(text);
    }
    m_layout = end > longestHeader ? std::nullopt : layoutOf(header);
    if (!m_layout)
        return failure(u"the app gave no picture that can be understood"_s);
    m_bytes.remove(0, end + 1);
    m_bytes.reserve(m_layout->stride * m_layout->height + 1);
    return std::nullopt;
}

std::optional<SnapshotReply::Layout> SnapshotReply::layoutOf(const QByteArray& header) {
    const QList<QByteArray> words = header.split(' ');
    if (words.size() != 4 || words[0] != "ok")
        return std::nullopt;
    bool areNumbers[3] = {};
    const Layout layout{words[1].toInt(&areNumbers[0]), words[2].toInt(&areNumbers[1]), words[3].toInt(&areNumbers[2])};
    const auto isEdge = [](int edge) { return edge >= 1 && edge <= largestEdge; };
    const qint64 line = qint64(layout.width) * bytesPerPixel;
    const bool isSane = areNumbers[0] && areNumbers[1] && areNumbers[2] && isEdge(layout.width) &&
                        isEdge(layout.height) && layout.stride >= line && layout.stride % bytesPerPixel == 0 &&
                        layout.stride * layout.height <= largestPicture;
    return isSane ? std::optional(layout) : std::nullopt;
}

ScreenCapture::Picture SnapshotReply::picture() const {
    const QImage image(reinterpret_cast<const uchar*>(m_bytes.constData()), m_layout->width, m_layout->height,
                       m_layout->stride, QImage::Format_ARGB32_Premultiplied);
    QImage copy = image.copy();
    if (copy.isNull())
        return failure(u"there is not enough memory for the picture"_s);
    return copy;
}

}  // namespace wrapio
