#include "Services/ToolOutput.h"

#include <QStringDecoder>

namespace wrapio {

std::optional<QString> decodedUtf8(const QByteArray& bytes) {
    // Stateless, so that a sequence cut off at the end counts as an error too.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

}  // namespace wrapio
