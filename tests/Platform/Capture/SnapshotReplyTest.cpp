#include "Platform/Linux/SnapshotReply.h"

#include "Fakes/PrintQt.h"

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// The first pixel is blue, the others are green at half opacity.
QByteArray pixels(int count) {
    QByteArray bytes = QByteArray::fromHex("ff0000ff");
    for (int i = 1; i < count; ++i)
        bytes += QByteArray::fromHex("00800080");
    return bytes;
}

QString failureOf(const std::optional<ScreenCapture::Picture>& outcome) {
    EXPECT_TRUE(outcome.has_value()) << "still waits";
    return outcome && !outcome->has_value() ? outcome->error().description() : QString();
}

}  // namespace

TEST(SnapshotReplyTest, becomes_a_picture_of_premultiplied_pixels) {
    SnapshotReply reply;
    const auto outcome = reply.append("ok 3 2 12\n" + pixels(6));
    ASSERT_TRUE(outcome && *outcome);
    const QImage& image = **outcome;
    EXPECT_EQ(image.size(), QSize(3, 2));
    EXPECT_EQ(image.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(image.pixelColor(0, 0), QColor(0, 0, 255));
    EXPECT_EQ(image.pixelColor(2, 1), QColor(0, 255, 0, 128));
}

TEST(SnapshotReplyTest, may_arrive_byte_by_byte) {
    SnapshotReply reply;
    const QByteArray all = "ok 2 2 8\n" + pixels(4);
    for (const char byte : all.chopped(1))
        ASSERT_FALSE(reply.append(QByteArray(1, byte)));
    const auto outcome = reply.append(all.right(1));
    ASSERT_TRUE(outcome && *outcome);
    EXPECT_EQ((*outcome)->pixelColor(0, 0), QColor(0, 0, 255));
}

TEST(SnapshotReplyTest, may_have_lines_longer_than_their_pixels) {
    SnapshotReply reply;
    const auto outcome = reply.append("ok 1 2 8\n" + pixels(4));
    ASSERT_TRUE(outcome && *outcome);
    EXPECT_EQ((*outcome)->size(), QSize(1, 2));
    EXPECT_EQ((*outcome)->pixelColor(0, 1).green(), 255);
}

TEST(SnapshotReplyTest, tells_an_error_in_the_apps_own_words) {
    EXPECT_EQ(failureOf(SnapshotReply().append("error the page is not ready\n")), u"the page is not ready"_s);
    EXPECT_EQ(failureOf(SnapshotReply().append("error \x1b[31mred\x07\n")), u"[31mred"_s);
}

TEST(SnapshotReplyTest, refuses_sizes_before_it_waits_for_their_pixels) {
    for (const char* const header :
         {"ok 0 2 8", "ok 2 0 8", "ok -2 2 8", "ok 16385 1 65540", "ok 1 16385 4", "ok 2 2 7", "ok 2 2 4", "ok 2 2 9",
          "ok 16384 16384 65536", "ok 2 2 2147483644", "ok 99999999999 2 8", "ok 2 2", "ok 2 2 8 1", "ok a b c",
          "OK 2 2 8", "", "hello", "ok  2 2 8"}) {
        EXPECT_EQ(failureOf(SnapshotReply().append(QByteArray(header) + '\n')),
                  u"the app gave no picture that can be understood"_s)
            << header;
    }
}

TEST(SnapshotReplyTest, takes_the_largest_sizes_that_are_allowed) {
    EXPECT_FALSE(SnapshotReply().append("ok 16384 4096 65536\n"));
    EXPECT_FALSE(SnapshotReply().append("ok 1 16384 4\n"));
}

TEST(SnapshotReplyTest, refuses_a_first_line_without_end) {
    SnapshotReply reply;
    EXPECT_FALSE(reply.append(QByteArray(512, 'x')));
    EXPECT_EQ(failureOf(reply.append("x")), u"the app gave no picture that can be understood"_s);
    EXPECT_EQ(failureOf(SnapshotReply().append("ok 1 1 4" + QByteArray(600, ' ') + '\n')),
              u"the app gave no picture that can be understood"_s);
}

TEST(SnapshotReplyTest, refuses_more_than_was_announced) {
    EXPECT_EQ(failureOf(SnapshotReply().append("ok 1 1 4\n" + pixels(2))), u"the app sent more than its picture"_s);
}

TEST(SnapshotReplyTest, is_a_failure_when_it_is_cut_off) {
    EXPECT_EQ(failureOf(SnapshotReply::cutOff()), u"the app ended before it had sent its picture"_s);
}

}  // namespace wrapio
