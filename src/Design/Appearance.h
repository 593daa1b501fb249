// What the person at this desktop has chosen: size of text, motion, colours of labels.
#pragma once

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace wrapio {

/// Follows the application's palette and font, and chooseReducedMotion(). Main thread.
class Appearance : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(double textScale READ textScale WRITE setTextScale NOTIFY textScaleChanged)
    Q_PROPERTY(bool reducedMotion READ reducedMotion WRITE setReducedMotion NOTIFY reducedMotionChanged)
    Q_PROPERTY(QColor label READ label NOTIFY labelsChanged)
    Q_PROPERTY(QColor secondaryLabel READ secondaryLabel NOTIFY labelsChanged)
    Q_PROPERTY(QColor tertiaryLabel READ tertiaryLabel NOTIFY labelsChanged)
    Q_PROPERTY(QString fontFamily READ fontFamily CONSTANT)
    Q_PROPERTY(QString codeFontFamily READ codeFontFamily CONSTANT)

public:
    static constexpr double smallestTextScale = 1.0;
    static constexpr double largestTextScale = 2.0;

    explicit Appearance(QObject* parent = nullptr);

    /// How much larger than usual text is drawn, from 1 to 2.
    [[nodiscard]] double textScale() const { return m_textScale; }
    void setTextScale(double scale);
    /// True when nothing is to move that need not.
    [[nodiscard]] bool reducedMotion() const { return m_reducedMotion; }
    void setReducedMotion(bool reduced);

    // The system's label colours, legible on every background that the interface draws under text.
    [[nodiscard]] QColor label() const;
    [[nodiscard]] QColor secondaryLabel() const;
    [[nodiscard]] QColor tertiaryLabel() const;

    [[nodiscard]] const QString& fontFamily() const { return m_fontFamily; }
    [[nodiscard]] const QString& codeFontFamily() const { return m_codeFontFamily; }

Q_SIGNALS:
    void textScaleChanged();
    void reducedMotionChanged();
    void labelsChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    double m_textScale = 1.0;
    bool m_reducedMotion = false;
    QString m_fontFamily;
    QString m_codeFontFamily;
};

/// Says for the whole program, now and later, whether motion is to be reduced.
void chooseReducedMotion(bool reduced);

/// The text scale that `pointSize` of the desktop's font stands for.
[[nodiscard]] double textScaleOf(double pointSize);

}  // namespace wrapio
