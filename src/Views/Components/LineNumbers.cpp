#include "Views/Components/LineNumbers.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace wrapio {

namespace {

/// Room for as many digits, so that the text does not jump with the tenth line.
constexpr int fewestDigits = 2;

}  // namespace

LineNumbers::LineNumbers(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    connect(this, &LineNumbers::changed, this, [this] { update(); });
}

void LineNumbers::setDocument(QQuickTextDocument* document) {
    if (document == m_document)
        return;
    if (m_document)
        m_document->textDocument()->disconnect(this);
    m_document = document;
    if (document) {
        connect(document->textDocument(), &QTextDocument::blockCountChanged, this, &LineNumbers::changed);
        connect(document->textDocument()->documentLayout(), &QAbstractTextDocumentLayout::update, this,
                [this] { update(); });
    }
    Q_EMIT changed();
}

double LineNumbers::widthNeeded() const {
    const int lines = m_document ? m_document->textDocument()->blockCount() : 1;
    const auto digits = std::max<qsizetype>(QString::number(lines).size(), fewestDigits);
    return QFontMetricsF(m_font).horizontalAdvance(QString(digits, QLatin1Char('0')));
}

void LineNumbers::paint(QPainter* painter) {
    if (!m_document)
        return;
    painter->setFont(m_font);
    painter->setPen(m_color);
    const QTextDocument& text = *m_document->textDocument();
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        const QRectF place = text.documentLayout()->blockBoundingRect(block).translated(0, -m_offset);
        if (place.bottom() < 0)
            continue;
        if (place.top() > height())
            break;
        const QTextLine line = block.layout()->lineAt(0);
        painter->drawText(QRectF(0, place.top(), width(), line.isValid() ? line.height() : place.height()),
                          Qt::AlignRight | Qt::AlignVCenter, QString::number(block.blockNumber() + 1));
    }
}

}  // namespace wrapio
