#include "Services/PreviewCacheManager.h"

#include "Fakes/TestImages.h"
#include "Services/ServiceFixture.h"

#include <QImageReader>

#include <gmock/gmock.h>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

const QUuid id(u"{0b7c57e2-5d0f-4c51-9a57-3e1f6b1d2a40}"_s);
const QString idText = u"0B7C57E2-5D0F-4C51-9A57-3E1F6B1D2A40"_s;

class PreviewCacheManagerTest : public ServiceFixture {
protected:
    PreviewCacheManager cache{files, directories};

    QString folder() const { return *directories.caches + u"/Wrapio/previews"_s; }
    QString file() const { return folder() + u'/' + idText + u".jpg"_s; }
};

TEST_F(PreviewCacheManagerTest, CreatesItsFolder) {
    EXPECT_TRUE(temporary.exists(folder()));
}

TEST_F(PreviewCacheManagerTest, SavesAJpegUnderTheUpperCaseId) {
    DiagnosticsCapture output;
    EXPECT_TRUE(cache.save(plainImage(40, 30), id));
    EXPECT_EQ(output.lines(), QStringList(u"✅ [PreviewCache] Saved preview for: "_s + idText));
    QImageReader reader(file());
    EXPECT_EQ(reader.format(), "jpeg");
    EXPECT_EQ(reader.size(), QSize(40, 30));
    EXPECT_EQ(temporary.list(folder())->size(), 1U);
}

TEST_F(PreviewCacheManagerTest, WritesWithAQualityOfFourFifths) {
    EXPECT_DOUBLE_EQ(PreviewCacheManager::jpegQuality, 0.8);
    QImage noise(64, 64, QImage::Format_RGB32);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x)
            noise.setPixel(x, y, qRgb(x * y * 7 % 256, x * 13 % 256, y * 29 % 256));
    ASSERT_TRUE(cache.save(noise, id));
    QByteArray expected;
    QBuffer buffer(&expected);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(80);
    ASSERT_TRUE(writer.write(noise));
    EXPECT_EQ(*temporary.read(file(), 1 << 20), expected);
}

TEST_F(PreviewCacheManagerTest, KeepsOnlyTheLatestImageOfAnApp) {
    ASSERT_TRUE(cache.save(plainImage(40, 30, Qt::red), id));
    ASSERT_TRUE(cache.save(plainImage(20, 10, Qt::blue), id));
    const auto image = cache.load(id);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(20, 10));
    EXPECT_GT(image->pixelColor(5, 5).blue(), 200);
    EXPECT_EQ(temporary.list(folder())->size(), 1U);
}

TEST_F(PreviewCacheManagerTest, TransparentPlacesBecomeWhite) {
    ASSERT_TRUE(cache.save(plainImage(16, 16, Qt::transparent), id));
    EXPECT_EQ(cache.load(id)->pixelColor(8, 8), QColor(Qt::white));
}

TEST_F(PreviewCacheManagerTest, DoesNotSaveAnImageThatIsNone) {
    DiagnosticsCapture output;
    EXPECT_FALSE(cache.save(QImage(), id));
    EXPECT_EQ(output.lines(), QStringList(u"⚠️ [PreviewCache] Failed to convert image to JPEG for: "_s + idText));
    EXPECT_FALSE(temporary.exists(file()));
}

TEST_F(PreviewCacheManagerTest, DoesNotSaveAnImageTooLargeForTheFormat) {
    DiagnosticsCapture output;
    EXPECT_FALSE(cache.save(plainImage(70000, 1), id));
    EXPECT_EQ(output.lines().last(), u"⚠️ [PreviewCache] Failed to convert image to JPEG for: "_s + idText);
}

TEST_F(PreviewCacheManagerTest, TellsWhyAPreviewWasNotWritten) {
    failWhere(u"write"_s, u".jpg"_s, ENOSPC);
    DiagnosticsCapture output;
    EXPECT_FALSE(cache.save(plainImage(4, 4), id));
    EXPECT_EQ(output.lines(), QStringList(u"⚠️ [PreviewCache] Failed to write preview: Could not write %1: "
                                          u"No space left on device"_s.arg(file())));
}

TEST_F(PreviewCacheManagerTest, AFolderThatCannotBeMadeIsNoticedOnlyWhenSaving) {
    failWhere(u"createDirectories"_s, u"previews"_s);
    Directories elsewhere = directories;
    elsewhere.caches = temporary.path(u"other"_s);
    DiagnosticsCapture output;
    PreviewCacheManager other(files, elsewhere);
    EXPECT_FALSE(other.save(plainImage(4, 4), id));
    EXPECT_THAT(output.lines().join(u'\n').toStdString(),
                testing::StartsWith("⚠️ [PreviewCache] Failed to write preview: "));
}

TEST_F(PreviewCacheManagerTest, LoadsWhatItSaved) {
    ASSERT_TRUE(cache.save(plainImage(40, 30), id));
    DiagnosticsCapture output;
    EXPECT_EQ(cache.load(id)->size(), QSize(40, 30));
    EXPECT_EQ(output.lines(), QStringList(u"✅ [PreviewCache] Loaded cached preview for: "_s + idText));
}

TEST_F(PreviewCacheManagerTest, LoadingAnAbsentPreviewIsSilent) {
    DiagnosticsCapture output;
    EXPECT_FALSE(cache.load(id));
    EXPECT_TRUE(output.lines().isEmpty());
}

TEST_F(PreviewCacheManagerTest, ReportsACorruptPreviewEachTimeAndLeavesIt) {
    ASSERT_TRUE(temporary.write(file(), "no picture"));
    DiagnosticsCapture output;
    EXPECT_FALSE(cache.load(id));
    EXPECT_FALSE(cache.load(id));
    const QString line = u"⚠️ [PreviewCache] Failed to load cached preview for: "_s + idText;
    EXPECT_EQ(output.lines(), (QStringList{line, line}));
    EXPECT_TRUE(temporary.exists(file()));
}

TEST_F(PreviewCacheManagerTest, DoesNotFindAFileInLowerCase) {
    ASSERT_TRUE(temporary.write(folder() + u'/' + idText.toLower() + u".jpg"_s, fileOf(plainImage(4, 4), "jpeg")));
    EXPECT_FALSE(cache.load(id));
}

TEST_F(PreviewCacheManagerTest, DeletesAPreview) {
    ASSERT_TRUE(cache.save(plainImage(4, 4), id));
    DiagnosticsCapture output;
    cache.delete_(id);
    EXPECT_EQ(output.lines(), QStringList(u"✅ [PreviewCache] Deleted cached preview for: "_s + idText));
    EXPECT_FALSE(temporary.exists(file()));
}

TEST_F(PreviewCacheManagerTest, DeletingNothingIsSilent) {
    DiagnosticsCapture output;
    cache.delete_(id);
    EXPECT_TRUE(output.lines().isEmpty());
    EXPECT_FALSE(files.log.contains(u"remove "_s + file()));
}

TEST_F(PreviewCacheManagerTest, TellsWhyAPreviewWasNotDeleted) {
    ASSERT_TRUE(cache.save(plainImage(4, 4), id));
    failWhere(u"remove"_s, u".jpg"_s, EACCES);
    DiagnosticsCapture output;
    cache.delete_(id);
    EXPECT_EQ(output.lines(), QStringList(u"⚠️ [PreviewCache] Failed to delete preview: Could not remove %1: "
                                          u"Permission denied"_s.arg(file())));
}

TEST_F(PreviewCacheManagerTest, TheProgramEndsWithoutACachesDirectory) {
    Directories none = directories;
    none.caches.reset();
    EXPECT_DEATH(PreviewCacheManager(files, none), "caches directory");
}

}  // namespace
}  // namespace wrapio
