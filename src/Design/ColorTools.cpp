#include "Design/ColorTools.h"

#include "Design/ColorHex.h"
#include "Design/Contrast.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace wrapio {

namespace {

constexpr int tileHues = 24;
constexpr float tileSaturation = 0.55F;
constexpr float tileBrightness = 0.62F;

}  // namespace

QVariant ColorTools::fromHex(const QString& hex) const {
    const auto color = colorFromHex(hex);
    return color ? QVariant::fromValue(*color) : QVariant();
}

QString ColorTools::toHex(const QColor& color) const {
    return wrapio::toHex(color).value_or(QString());
}

QColor ColorTools::tileColor(const QString& name) const {
    // Not qHash: its seed differs between runs.
    quint32 hash = 2166136261U;
    for (const QChar character : name.toCaseFolded())
        hash = (hash ^ character.unicode()) * 16777619U;
    const auto hue = static_cast<float>(hash % tileHues) / static_cast<float>(tileHues);
    return QColor::fromHsvF(hue, tileSaturation, tileBrightness);
}

QString ColorTools::initial(const QString& name) const {
    QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, name);
    for (qsizetype from = 0, to = letters.toNextBoundary(); to > from; from = to, to = letters.toNextBoundary()) {
        const QString letter = name.sliced(from, to - from);
        const QChar first = letter.front();
        if (first.isLetterOrNumber() || first.isSurrogate())
            return letter.toUpper();
    }
    return QStringLiteral("•");
}

QColor ColorTools::fromHsv(double hue, double saturation, double brightness) const {
    const auto share = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
    return QColor::fromHsvF(share(hue), share(saturation), share(brightness)).toRgb();
}

QColor ColorTools::labelOn(const QColor& background) const {
    const QColor dark = windowBackground();
    return contrastRatio(Qt::white, background) >= contrastRatio(dark, background) ? QColor(Qt::white) : dark;
}

double ColorTools::contrast(const QColor& text, const QColor& background) const {
    const QColor below = blended(background, windowBackground());
    return contrastRatio(blended(text, below), below);
}

}  // namespace wrapio
