#include "Views/IconProviders.h"

#include "Fakes/ManualScheduler.h"
#include "Fakes/PrintQt.h"
#include "Models/AppConfiguration.h"
#include "Offline/OfflineFixture.h"

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

class AppIconProviderTest : public testing::Test {
protected:
    [[nodiscard]] QImage requested(const QSize& size = QSize(72, 72)) {
        return provider.requestImage(canonicalText(id) + u"?7"_s, nullptr, size);
    }

    static QImage filled(const QColor& color) {
        QImage image(256, 256, QImage::Format_ARGB32);
        image.fill(color);
        return image;
    }

    ManualScheduler scheduler;
    OfflineFixture fixture{u"empty"_s, scheduler};
    AppIconProvider provider{fixture.favicons()};
    QUuid id = QUuid::createUuid();
};

}  // namespace

TEST_F(AppIconProviderTest, has_nothing_for_an_app_without_an_icon) {
    EXPECT_TRUE(requested().isNull());
}

TEST_F(AppIconProviderTest, rounds_the_corners_of_a_picture_that_fills_its_square) {
    fixture.favicons().saveIcon(filled(Qt::red), id);
    const QImage icon = requested();
    EXPECT_EQ(icon.size(), QSize(72, 72));
    for (const QPoint& corner : {QPoint(0, 0), QPoint(71, 0), QPoint(0, 71), QPoint(71, 71)})
        EXPECT_EQ(icon.pixelColor(corner).alpha(), 0);
    for (const QPoint& inside : {QPoint(36, 36), QPoint(36, 0), QPoint(0, 36), QPoint(16, 16)})
        EXPECT_EQ(icon.pixelColor(inside), QColor(Qt::red));
}

TEST_F(AppIconProviderTest, leaves_a_picture_alone_that_has_a_shape_of_its_own) {
    QImage shape = filled(Qt::red);
    shape.setPixelColor(255, 255, Qt::transparent);
    fixture.favicons().saveIcon(shape, id);
    EXPECT_EQ(requested(QSize(256, 256)).pixelColor(0, 0), QColor(Qt::red));
}

TEST_F(AppIconProviderTest, leaves_it_to_the_scene_to_draw_a_small_picture_larger) {
    fixture.favicons().saveIcon(filled(Qt::red).scaled(32, 32), id);
    QSize size;
    EXPECT_EQ(provider.requestImage(canonicalText(id), &size, QSize(72, 72)).size(), QSize(32, 32));
    EXPECT_EQ(size, QSize(32, 32));
}

}  // namespace wrapio
