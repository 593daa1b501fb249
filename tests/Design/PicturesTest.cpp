#include "Design/GradientRectangle.h"
#include "Design/ShadowImageProvider.h"
#include "Design/SymbolImageProvider.h"

#include <QGuiApplication>
#include <QPainter>

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

int visiblePixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y).alpha() > 0 ? 1 : 0;
    return count;
}

}  // namespace

TEST(ShadowImage, is_densest_inside_and_gone_at_its_edge) {
    const QImage shadow = shadowImage(18, 20, Qt::black);
    const int middle = shadow.width() / 2;
    EXPECT_GE(shadow.pixelColor(middle, middle).alpha(), 250);
    EXPECT_EQ(shadow.pixelColor(0, middle).alpha(), 0);
    EXPECT_EQ(shadow.pixelColor(0, 0).alpha(), 0);
}

TEST(ShadowImage, falls_steadily_from_the_middle_to_the_side) {
    const QImage shadow = shadowImage(18, 10, Qt::black);
    const int middle = shadow.width() / 2;
    for (int x = 1; x <= middle; ++x)
        EXPECT_GE(shadow.pixelColor(x, middle).alpha(), shadow.pixelColor(x - 1, middle).alpha());
    const int halfWay = shadow.pixelColor(10, middle).alpha();
    EXPECT_NEAR(halfWay, 128, 24);
}

TEST(ShadowImage, has_borders_between_which_nothing_changes) {
    const QImage shadow = shadowImage(18, 10, Qt::black);
    const int border = shadowBorder(18, 10);
    for (int y = 0; y < shadow.height(); ++y)
        EXPECT_EQ(shadow.pixelColor(border, y), shadow.pixelColor(shadow.width() - border - 1, y));
}

TEST(ShadowImage, has_the_colour_of_a_glow) {
    QSize size;
    const QImage glow = ShadowImageProvider().requestImage(u"18/12?%23ff00c864"_s, &size, {});
    EXPECT_EQ(size, glow.size());
    EXPECT_GT(glow.pixelColor(glow.width() / 2, glow.height() / 2).green(), 150);
}

TEST(ShadowImage, stays_small_whatever_is_asked_for) {
    EXPECT_LE(ShadowImageProvider().requestImage(u"99999/99999"_s, nullptr, {}).width(), 1000);
}

TEST(SymbolImage, is_drawn_in_the_colour_and_the_size_that_are_asked_for) {
    int count = 0;
    const QGuiApplication application(count, nullptr);
    QSize size;
    const QImage symbol = SymbolImageProvider().requestImage(u"trash.fill?%233366cc"_s, &size, QSize(48, 48));
    EXPECT_EQ(symbol.size(), QSize(48, 48));
    EXPECT_EQ(size, symbol.size());
    EXPECT_GT(visiblePixels(symbol), 300);
    EXPECT_EQ(symbol.pixelColor(24, 40).rgb(), QColor(0x33, 0x66, 0xcc).rgb());
}

TEST(SymbolImage, is_nothing_for_an_unknown_name) {
    EXPECT_TRUE(SymbolImageProvider().requestImage(u"no.such.symbol?#ffffffff"_s, nullptr, QSize(16, 16)).isNull());
}

TEST(GradientRectangle, runs_from_the_top_leading_to_the_bottom_trailing_corner) {
    int count = 0;
    const QGuiApplication application(count, nullptr);
    GradientRectangle rectangle;
    rectangle.setProperty("from", QColor(Qt::red));
    rectangle.setProperty("to", QColor(Qt::blue));
    rectangle.setSize({100, 100});
    QImage picture(100, 100, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    rectangle.paint(&painter);
    painter.end();
    EXPECT_GT(picture.pixelColor(2, 2).red(), 240);
    EXPECT_GT(picture.pixelColor(97, 97).blue(), 240);
    EXPECT_NEAR(picture.pixelColor(97, 2).red(), 128, 8);
    EXPECT_NEAR(picture.pixelColor(2, 97).blue(), 128, 8);
}

}  // namespace wrapio
