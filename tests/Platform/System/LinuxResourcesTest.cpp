#include "Platform/Linux/LinuxResources.h"

#include "Fakes/PrintQt.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

struct LinuxResourcesTest : testing::Test {
    void SetUp() override {
        ASSERT_TRUE(QDir().mkpath(share + u"/templates"_s));
        ASSERT_TRUE(QDir().mkpath(share + u"/icons"_s));
    }
    void write(const QString& name, const QByteArray& bytes) const {
        QFile file(share + u'/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    void writePng(const QString& name, const QSize& size) const {
        QImage picture(size, QImage::Format_ARGB32);
        picture.fill(Qt::red);
        ASSERT_TRUE(picture.save(share + u'/' + name));
    }
    static QByteArray drawing(int width, int height, const char* colour) {
        return QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 %1 %2'>"
                              "<rect width='%1' height='%2' fill='%3'/></svg>")
            .arg(width)
            .arg(height)
            .arg(QLatin1StringView(colour))
            .toUtf8();
    }

    QTemporaryDir prefix;
    QString share = prefix.path() + u"/share/wrapio"_s;
    LinuxResources resources{share};
};

TEST_F(LinuxResourcesTest, TheShareFolderLiesBesideTheFolderOfTheProgram) {
    EXPECT_EQ(LinuxResources::shareFolderOf(u"/usr/local/bin/wrapio"_s), u"/usr/local/share/wrapio"_s);
    EXPECT_TRUE(LinuxResources::thisExecutable().endsWith(u"/SystemServicesTest"_s));
}

TEST_F(LinuxResourcesTest, ABundledFolderIsFoundByNameAndExtension) {
    EXPECT_EQ(resources.path(u"WrapioRunner"_s, u"app"_s), std::nullopt);
    ASSERT_TRUE(QDir().mkpath(share + u"/WrapioRunner.app"_s));
    EXPECT_EQ(resources.path(u"WrapioRunner"_s, u"app"_s), share + u"/WrapioRunner.app"_s);
    write(u"File.app"_s, "no folder");
    EXPECT_EQ(resources.path(u"File"_s, u"app"_s), std::nullopt);
}

TEST_F(LinuxResourcesTest, NamesDoNotLeaveTheFolder) {
    ASSERT_TRUE(QDir().mkpath(prefix.path() + u"/share/Other.app"_s));
    writePng(u"picture.png"_s, {8, 8});
    EXPECT_EQ(resources.path(u"../Other"_s, u"app"_s), std::nullopt);
    EXPECT_EQ(resources.image(u"../picture"_s), std::nullopt);
    EXPECT_EQ(resources.image(QString()), std::nullopt);
}

TEST_F(LinuxResourcesTest, ADrawingIsMadeAsLargeAsAnAppIconNeeds) {
    write(u"templates/square.svg"_s, drawing(24, 24, "#00ff00"));
    write(u"icons/wide.svg"_s, drawing(100, 50, "#0000ff"));
    const auto square = resources.image(u"square"_s);
    ASSERT_TRUE(square);
    EXPECT_EQ(square->size(), QSize(512, 512));
    EXPECT_EQ(square->pixelColor(500, 500), QColor(0, 255, 0));
    const auto wide = resources.image(u"wide"_s);
    ASSERT_TRUE(wide);
    EXPECT_EQ(wide->size(), QSize(512, 256));
}

TEST_F(LinuxResourcesTest, OtherPicturesComeAsTheyAre) {
    writePng(u"templates/photo.png"_s, {64, 32});
    const auto photo = resources.image(u"photo"_s);
    ASSERT_TRUE(photo);
    EXPECT_EQ(photo->size(), QSize(64, 32));
}

TEST_F(LinuxResourcesTest, ATemplatesPictureComesBeforeAnIconAndADrawingBeforeAPhotograph) {
    write(u"templates/both.svg"_s, drawing(10, 10, "#00ff00"));
    writePng(u"templates/both.png"_s, {8, 8});
    write(u"icons/both.svg"_s, drawing(10, 10, "#0000ff"));
    EXPECT_EQ(resources.image(u"both"_s)->pixelColor(1, 1), QColor(0, 255, 0));
}

TEST_F(LinuxResourcesTest, APictureThatIsMissingOrDamagedIsNone) {
    write(u"templates/damaged.svg"_s, "<svg");
    write(u"templates/damaged2.png"_s, "\x89PNG\r\n");
    write(u"icons/empty.svg"_s, "");
    for (const auto& name : {u"missing"_s, u"damaged"_s, u"damaged2"_s, u"empty"_s})
        EXPECT_EQ(resources.image(name), std::nullopt) << name.toStdString();
}

}  // namespace
}  // namespace wrapio
