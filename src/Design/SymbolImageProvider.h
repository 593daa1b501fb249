// The interface's symbols, tinted.
#pragma once

#include <QQuickImageProvider>

namespace wrapio {

/// Serves "image://symbol/NAME?COLOR" from the symbols that the program carries, in the size that is asked for. An
/// unknown name gives no picture.
class SymbolImageProvider final : public QQuickImageProvider {
public:
    SymbolImageProvider();
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace wrapio
