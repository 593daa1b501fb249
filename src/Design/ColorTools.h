// Conversions of colours for bindings.
#pragma once

#include <QColor>
#include <QObject>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

namespace wrapio {

class ColorTools : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// The colour that `hex` stands for; `undefined` when it stands for none.
    Q_INVOKABLE [[nodiscard]] QVariant fromHex(const QString& hex) const;
    /// "#RRGGBB"; an empty text for a colour that sRGB cannot express.
    Q_INVOKABLE [[nodiscard]] QString toHex(const QColor& color) const;
    /// The fill of a tile that is drawn from a name: the same name has the same colour in every run.
    Q_INVOKABLE [[nodiscard]] QColor tileColor(const QString& name) const;
    /// The letter on such a tile: the first of the name that can be seen, in upper case.
    Q_INVOKABLE [[nodiscard]] QString initial(const QString& name) const;
    /// Each from 0 to 1.
    Q_INVOKABLE [[nodiscard]] QColor fromHsv(double hue, double saturation, double brightness) const;
    /// White or the window's near-black, whichever is easier to read on `background`.
    Q_INVOKABLE [[nodiscard]] QColor labelOn(const QColor& background) const;
    /// How well `text` can be told from `background`, both drawn over the window: from 1 to 21.
    Q_INVOKABLE [[nodiscard]] double contrast(const QColor& text, const QColor& background) const;
};

}  // namespace wrapio
