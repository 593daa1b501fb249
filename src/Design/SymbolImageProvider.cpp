#include "Design/SymbolImageProvider.h"

#include <QColor>
#include <QImageReader>
#include <QPainter>
#include <QUrl>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize defaultSize(24, 24);

QImage tinted(const QImage& shape, const QColor& color) {
    QImage picture = shape.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), color);
    return picture;
}

}  // namespace

SymbolImageProvider::SymbolImageProvider()
    : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage SymbolImageProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const QString name = id.section(u'?', 0, 0);
    const QColor color(QUrl::fromPercentEncoding(id.section(u'?', 1).toUtf8()));
    QImageReader reader(u":/wrapio/symbols/"_s + name + u".svg"_s);
    reader.setScaledSize(requestedSize.isEmpty() ? defaultSize : requestedSize);
    const QImage shape = reader.read();
    if (size)
        *size = shape.size();
    return shape.isNull() ? shape : tinted(shape, color.isValid() ? color : QColor(Qt::white));
}

}  // namespace wrapio
