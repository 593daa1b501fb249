#include "Design/Appearance.h"

#include "Design/Contrast.h"

#include <QEvent>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

// The shares of the label colour that desktops give to what matters less.
constexpr double labelOpacity = 0.92;
constexpr double secondaryOpacity = 0.68;
constexpr double tertiaryOpacity = 0.5;

/// What desktops set text in when nobody has asked for another size lies between 9 and 11 points.
constexpr double largestUsualPointSize = 11;
constexpr double usualPointSize = 10;

/// The lightest of what lies under text: a card under the pointer.
QColor lightestBackground() {
    return blended(QColor::fromRgbF(1, 1, 1, 0.1F), windowBackground());
}

/// What every instance looks at: each engine has one of its own.
constexpr const char* motionProperty = "wrapioReducedMotion";

bool isMotionReduced() {
    return qGuiApp->property(motionProperty).toBool();
}

QColor systemLabel(double opacity) {
    return legibleLabel(QGuiApplication::palette().color(QPalette::WindowText), opacity, lightestBackground());
}

QString preferredFamily() {
    const QString preferred = u"Inter"_s;
    return QFontDatabase::hasFamily(preferred) ? preferred : QGuiApplication::font().family();
}

}  // namespace

Appearance::Appearance(QObject* parent)
    : QObject(parent)
    , m_textScale(textScaleOf(QGuiApplication::font().pointSizeF()))
    , m_reducedMotion(isMotionReduced())
    , m_fontFamily(preferredFamily())
    , m_codeFontFamily(QFontDatabase::systemFont(QFontDatabase::FixedFont).family()) {
    qGuiApp->installEventFilter(this);
}

bool Appearance::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qGuiApp && event->type() == QEvent::ApplicationPaletteChange)
        Q_EMIT labelsChanged();
    if (watched == qGuiApp && event->type() == QEvent::ApplicationFontChange)
        setTextScale(textScaleOf(QGuiApplication::font().pointSizeF()));
    if (watched == qGuiApp && event->type() == QEvent::DynamicPropertyChange &&
        static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName() == motionProperty)
        setReducedMotion(isMotionReduced());
    return QObject::eventFilter(watched, event);
}

void Appearance::setTextScale(double scale) {
    const double kept = std::clamp(scale, smallestTextScale, largestTextScale);
    if (qFuzzyCompare(kept, m_textScale))
        return;
    m_textScale = kept;
    Q_EMIT textScaleChanged();
}

void Appearance::setReducedMotion(bool reduced) {
    if (reduced == m_reducedMotion)
        return;
    m_reducedMotion = reduced;
    Q_EMIT reducedMotionChanged();
}

QColor Appearance::label() const {
    return systemLabel(labelOpacity);
}

QColor Appearance::secondaryLabel() const {
    return systemLabel(secondaryOpacity);
}

QColor Appearance::tertiaryLabel() const {
    return systemLabel(tertiaryOpacity);
}

void chooseReducedMotion(bool reduced) {
    qGuiApp->setProperty(motionProperty, reduced);
}

double textScaleOf(double pointSize) {
    if (pointSize <= largestUsualPointSize)
        return Appearance::smallestTextScale;
    return std::min(pointSize / usualPointSize, Appearance::largestTextScale);
}

}  // namespace wrapio
