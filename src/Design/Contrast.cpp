#include "Design/Contrast.h"

#include <algorithm>
#include <cmath>

namespace wrapio {

namespace {

constexpr double step = 0.02;
/// Above it, black stands out more than white.
constexpr double middleLuminance = 0.18;

double linear(float component) {
    const auto value = static_cast<double>(component);
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

float mixed(float top, float bottom, float opacity) {
    return std::clamp(top * opacity + bottom * (1.0F - opacity), 0.0F, 1.0F);
}

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(std::clamp(opacity, 0.0, 1.0)));
    return color;
}

QColor mirrored(const QColor& color) {
    const QColor hsl = color.toHsl();
    return QColor::fromHslF(std::max(hsl.hslHueF(), 0.0F), hsl.hslSaturationF(), 1.0F - hsl.lightnessF()).toRgb();
}

}  // namespace

QColor windowBackground() {
    return QColor::fromRgbF(0.05F, 0.05F, 0.08F);
}

QColor blended(const QColor& top, const QColor& bottom) {
    const float opacity = top.alphaF();
    return QColor::fromRgbF(mixed(top.redF(), bottom.redF(), opacity), mixed(top.greenF(), bottom.greenF(), opacity),
                            mixed(top.blueF(), bottom.blueF(), opacity));
}

double relativeLuminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrastRatio(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({relativeLuminance(one), relativeLuminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor legibleLabel(const QColor& systemLabel, double opacity, const QColor& background) {
    const auto isLegible = [&background](const QColor& label) {
        return contrastRatio(blended(label, background), background) >= legibleContrast;
    };
    QColor label = withOpacity(systemLabel.toRgb(), opacity);
    if (contrastRatio(withOpacity(label, 1.0), background) < legibleContrast)
        label = withOpacity(mirrored(label), opacity);
    const QColor extreme = relativeLuminance(background) < middleLuminance ? Qt::white : Qt::black;
    for (double share = step; !isLegible(label) && share <= 1.0; share += step)
        label = withOpacity(blended(withOpacity(extreme, share), label), opacity);
    for (double reached = opacity; !isLegible(label) && reached < 1.0; reached += step)
        label.setAlphaF(static_cast<float>(std::min(reached + step, 1.0)));
    return label;
}

}  // namespace wrapio
