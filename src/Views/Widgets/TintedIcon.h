// Pictures of one colour, in the colour that is wanted.
#pragma once

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QSize>

namespace wrapio {

/// The shape of `image` filled with `color`, as large as fits into `size` device pixels.
[[nodiscard]] QImage tinted(const QImage& image, QColor color, QSize size);

/// An icon of the shape that can be told from light and from dark bars alike: `color` with a thin rim of its opposite.
[[nodiscard]] QIcon statusIcon(const QImage& shape, QColor color);

}  // namespace wrapio
