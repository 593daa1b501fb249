#include "Services/IconPictures.h"

#include "Fakes/TestImages.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

const std::vector<int> edges{16, 32, 64};

const QImage red = plainImage(20, 20, Qt::red);
const QImage green = plainImage(20, 20, Qt::green);
const QImage blue = plainImage(20, 20, Qt::blue);

TEST(IconPicturesTest, DrawsEachEdgeOnceHoweverOftenItIsAskedFor) {
    const IconPictures pictures = drawIconPictures(red, {16, 32, 32, 64, 16});
    ASSERT_EQ(pictures.size(), 3U);
    for (const int edge : edges)
        EXPECT_EQ(QImage::fromData(pictures.at(edge).value()).size(), QSize(edge, edge));
}

TEST(IconPicturesTest, HasNothingForAPictureThatCannotBeDrawn) {
    EXPECT_FALSE(drawIconPictures(QImage(), {16}).at(16));
}

TEST(PreparedIconPicturesTest, AreTheSameAsThoseDrawnWhenAskedFor) {
    PreparedIconPictures prepared;
    prepared.prepare(red, edges);
    EXPECT_EQ(prepared.take(red), drawIconPictures(red, edges));
}

TEST(PreparedIconPicturesTest, BelongToThePixelsAndNotToTheObject) {
    PreparedIconPictures prepared;
    prepared.prepare(red, edges);
    EXPECT_FALSE(prepared.take(green));
    EXPECT_TRUE(prepared.take(red.copy()));
}

TEST(PreparedIconPicturesTest, AreHandedOutOnce) {
    PreparedIconPictures prepared;
    prepared.prepare(red, edges);
    EXPECT_TRUE(prepared.take(red));
    EXPECT_FALSE(prepared.take(red));
}

TEST(PreparedIconPicturesTest, GiveWayToNewerOnesWhenNobodyAsksForThem) {
    PreparedIconPictures prepared;
    for (const QImage& image : {red, green, blue})
        prepared.prepare(image, edges);
    EXPECT_FALSE(prepared.take(red));
    EXPECT_TRUE(prepared.take(blue));
    EXPECT_TRUE(prepared.take(green));
}

TEST(PreparedIconPicturesTest, MayGoAwayWhileTheyAreDrawn) {
    PreparedIconPictures prepared;
    prepared.prepare(plainImage(400, 400), {512, 1024});
}

}  // namespace
}  // namespace wrapio
