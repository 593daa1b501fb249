#include "Design/ColorHex.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr int largestByte = 255;

bool isHexDigit(QChar character) {
    const char16_t c = character.unicode();
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

}  // namespace

std::optional<QColor> colorFromHex(const QString& hex) {
    QString digits = hex.trimmed();
    digits.remove(u'#');
    const bool hasOpacity = digits.size() == 8;
    if ((digits.size() != 6 && !hasOpacity) || !std::all_of(digits.cbegin(), digits.cend(), isHexDigit))
        return std::nullopt;
    const auto byteAt = [&digits](int place) { return digits.mid(2 * place, 2).toInt(nullptr, 16); };
    return QColor(byteAt(0), byteAt(1), byteAt(2), hasOpacity ? byteAt(3) : largestByte);
}

std::optional<QString> toHex(const QColor& color) {
    if (!color.isValid())
        return std::nullopt;
    const QColor rgb = color.toExtendedRgb();
    const std::array components = {rgb.redF(), rgb.greenF(), rgb.blueF()};
    QString text = u"#"_s;
    for (const float component : components) {
        if (component < 0.0F || component > 1.0F)
            return std::nullopt;
        const int byte = static_cast<int>(std::lround(component * largestByte));
        text += u"%1"_s.arg(byte, 2, 16, QChar(u'0')).toUpper();
    }
    return text;
}

}  // namespace wrapio
