// A button of the preview panel.
#pragma once

#include "Views/Widgets/Symbols.h"

#include <QAbstractButton>

namespace wrapio {

class PreviewButton final : public QAbstractButton {
    Q_OBJECT

public:
    enum class Look { prominent, link };

    /// `symbols` must outlive this.
    PreviewButton(Look look, const QString& text, const QString& symbol, Symbols& symbols, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    [[nodiscard]] QColor backgroundColor() const;

    Look m_look;
    QString m_symbol;
    Symbols& m_symbols;
};

}  // namespace wrapio
