#include "Services/IconService.h"

#include "Fakes/TestImages.h"
#include "Services/ServiceFixture.h"

#include <QUuid>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

const QString iconutil = u"/usr/bin/iconutil"_s;

class IconServiceTest : public ServiceFixture {
protected:
    IconService icons{tools, files};
    QString folder = temporary.path(u"Resources"_s);
    QStringList iconset;  ///< what the tool found: "NAME EDGExEDGE"
    QImage smallest;

    IconServiceTest() { EXPECT_TRUE(temporary.createDirectories(folder)); }

    /// Lets the tool look at what it is given and write its result.
    void answerLikeTheTool() {
        tools.answer(iconutil, [this](const QStringList& arguments) -> tl::expected<ToolResult, LaunchError> {
            const QString set = arguments.at(2);
            const auto names = temporary.list(set);
            for (const QString& name : *names) {
                const QImage image(set + u'/' + name);
                iconset << u"%1 %2x%3"_s.arg(name).arg(image.width()).arg(image.height());
                if (image.width() == 16)
                    smallest = image;
            }
            EXPECT_TRUE(temporary.write(arguments.at(4), "icns of " + QByteArray::number(iconset.size())));
            return ToolResult{};
        });
    }
    static QByteArray png(int width = 100, int height = 100) { return fileOf(plainImage(width, height), "png"); }
    template <typename Error>
    static Error errorOf(const tl::expected<QString, AnyError>& result, Error otherwise) {
        const Error* const error = result ? nullptr : result.error().as<Error>();
        EXPECT_NE(error, nullptr);
        return error ? *error : otherwise;
    }
    IconServiceError failureOf(const tl::expected<QString, AnyError>& result) {
        return errorOf(result, IconServiceError::iconutilFailed(u"no error of the service"_s));
    }
};

TEST_F(IconServiceTest, HandsTenPicturesOfTheirSizesToTheTool) {
    answerLikeTheTool();
    ASSERT_TRUE(icons.convertPngToIcns(png(), folder));
    EXPECT_EQ(iconset,
              (QStringList{u"icon_128x128.png 128x128"_s, u"icon_128x128@2x.png 256x256"_s, u"icon_16x16.png 16x16"_s,
                           u"icon_16x16@2x.png 32x32"_s, u"icon_256x256.png 256x256"_s,
                           u"icon_256x256@2x.png 512x512"_s, u"icon_32x32.png 32x32"_s, u"icon_32x32@2x.png 64x64"_s,
                           u"icon_512x512.png 512x512"_s, u"icon_512x512@2x.png 1024x1024"_s}));
}

TEST_F(IconServiceTest, CallsTheToolWithAScratchFolderOfItsOwn) {
    answerLikeTheTool();
    ASSERT_TRUE(icons.convertPngToIcns(png(), folder));
    ASSERT_TRUE(icons.convertPngToIcns(png(), folder));
    ASSERT_EQ(tools.calls().size(), 2U);
    const auto& [path, arguments] = tools.calls().front();
    const QString scratch = arguments.at(2).chopped(16);
    EXPECT_EQ(path, iconutil);
    EXPECT_EQ(arguments, (QStringList{u"-c"_s, u"icns"_s, scratch + u"/AppIcon.iconset"_s, u"-o"_s,
                                      scratch + u"/AppIcon.icns"_s}));
    const QString name = scratch.mid(folder.size() + 1);
    EXPECT_EQ(QUuid(name).toString(QUuid::WithoutBraces).toUpper(), name);
    EXPECT_FALSE(QUuid(name).isNull());
    EXPECT_NE(tools.calls().back().arguments, arguments);
}

TEST_F(IconServiceTest, WritesThePicturesInTheOrderOfTheTable) {
    answerLikeTheTool();
    ASSERT_TRUE(icons.convertPngToIcns(png(), folder));
    QStringList written;
    for (const QString& line : files.log) {
        if (line.startsWith(u"write "_s))
            written << line.section(u'/', -1);
    }
    EXPECT_EQ(written,
              (QStringList{u"icon_16x16.png"_s, u"icon_16x16@2x.png"_s, u"icon_32x32.png"_s, u"icon_32x32@2x.png"_s,
                           u"icon_128x128.png"_s, u"icon_128x128@2x.png"_s, u"icon_256x256.png"_s,
                           u"icon_256x256@2x.png"_s, u"icon_512x512.png"_s, u"icon_512x512@2x.png"_s}));
}

TEST_F(IconServiceTest, LeavesNothingButTheIconFile) {
    answerLikeTheTool();
    const auto result = icons.convertPngToIcns(png(), folder);
    ASSERT_TRUE(result);
    EXPECT_EQ(*result, folder + u"/AppIcon.icns"_s);
    EXPECT_EQ(*temporary.list(folder), std::vector{u"AppIcon.icns"_s});
    EXPECT_EQ(*temporary.read(*result, 100), "icns of 10");
}

TEST_F(IconServiceTest, ReplacesAnOlderIconFile) {
    ASSERT_TRUE(temporary.write(folder + u"/AppIcon.icns"_s, "older"));
    answerLikeTheTool();
    ASSERT_TRUE(icons.convertPngToIcns(png(), folder));
    EXPECT_EQ(*temporary.read(folder + u"/AppIcon.icns"_s, 100), "icns of 10");
    EXPECT_EQ(temporary.list(folder)->size(), 1U);
}

TEST_F(IconServiceTest, StretchesAPictureThatIsNotSquare) {
    answerLikeTheTool();
    ASSERT_TRUE(icons.convertPngToIcns(png(200, 50), folder));
    EXPECT_EQ(smallest.pixelColor(8, 0), QColor(Qt::red));
    EXPECT_EQ(smallest.pixelColor(8, 15), QColor(Qt::red));
    EXPECT_TRUE(smallest.hasAlphaChannel());
}

TEST_F(IconServiceTest, RefusesWhatIsNoImageBeforeAnythingIsCreated) {
    const auto result = icons.convertPngToIcns("no picture", folder);
    EXPECT_EQ(failureOf(result), IconServiceError::invalidImageData());
    EXPECT_EQ(result.error().description(), u"Invalid image data provided"_s);
    EXPECT_TRUE(files.log.isEmpty());
    EXPECT_TRUE(tools.calls().empty());
}

TEST_F(IconServiceTest, ReportsWhatTheToolSaidAndCleansUp) {
    tools.answer(iconutil, ToolResult{1, "ignored", "bad iconset\n"});
    const auto result = icons.convertPngToIcns(png(), folder);
    EXPECT_EQ(failureOf(result), IconServiceError::iconutilFailed(u"bad iconset\n"_s));
    EXPECT_EQ(result.error().description(), u"Icon generation failed: bad iconset\n"_s);
    EXPECT_TRUE(temporary.list(folder)->empty());
}

TEST_F(IconServiceTest, ReportsAToolThatSaidNothing) {
    tools.answer(iconutil, ToolResult{1, {}, {}});
    EXPECT_EQ(icons.convertPngToIcns(png(), folder).error().description(), u"Icon generation failed: "_s);
}

TEST_F(IconServiceTest, ReportsAToolWhoseOutputIsNoText) {
    tools.answer(iconutil, ToolResult{1, {}, "\xFF\xFE"});
    EXPECT_EQ(icons.convertPngToIcns(png(), folder).error().description(),
              u"Icon generation failed: Unknown iconutil error"_s);
}

TEST_F(IconServiceTest, PassesOnThatTheToolDidNotStartAndLeavesTheScratchFolder) {
    tools.remove(iconutil);
    const auto result = icons.convertPngToIcns(png(), folder);
    EXPECT_EQ(errorOf(result, LaunchError{}).path, iconutil);
    EXPECT_EQ(temporary.list(folder)->size(), 1U);
}

struct Fault {
    const char* name;
    QString operation;
    QString ending;
    std::size_t entriesLeft;
};
class IconServiceFaultTest : public IconServiceTest, public testing::WithParamInterface<Fault> {};

TEST_P(IconServiceFaultTest, IsPassedOn) {
    ASSERT_TRUE(temporary.write(folder + u"/AppIcon.icns"_s, "older"));
    answerLikeTheTool();
    files.fault = [this](const QString& operation, const QString& path) -> std::optional<int> {
        const bool inScratch = path.size() > folder.size() + 30;
        const bool isMine = operation == GetParam().operation && path.endsWith(GetParam().ending);
        return isMine && (GetParam().ending != u"scratch"_s || inScratch) ? std::optional(ENOSPC) : std::nullopt;
    };
    const auto result = icons.convertPngToIcns(png(), folder);
    EXPECT_EQ(errorOf(result, FileError{}).code, ENOSPC);
    EXPECT_EQ(temporary.list(folder)->size(), GetParam().entriesLeft);
}

INSTANTIATE_TEST_SUITE_P(Operations, IconServiceFaultTest,
                         testing::Values(Fault{"MakingTheScratchFolder", u"createDirectories"_s, u""_s, 1},
                                         Fault{"MakingTheIconset", u"createDirectories"_s, u".iconset"_s, 2},
                                         Fault{"WritingAPicture", u"write"_s, u"icon_256x256.png"_s, 2},
                                         Fault{"RemovingTheOlderIcon", u"remove"_s, u"AppIcon.icns"_s, 2},
                                         Fault{"MovingTheResult", u"move"_s, u"AppIcon.icns"_s, 1}),
                         [](const auto& parameter) { return parameter.param.name; });

TEST_F(IconServiceTest, IgnoresThatTheScratchFolderCannotBeRemoved) {
    answerLikeTheTool();
    files.fault = [](const QString& operation, const QString&) {
        return operation == u"remove"_s ? std::optional(EBUSY) : std::nullopt;
    };
    EXPECT_TRUE(icons.convertPngToIcns(png(), folder));
    EXPECT_EQ(temporary.list(folder)->size(), 2U);
}

TEST_F(IconServiceTest, EveryErrorSaysWhatItIs) {
    EXPECT_EQ(IconServiceError::imageResizingFailed().description(), u"Failed to resize image for icon generation"_s);
}

}  // namespace
}  // namespace wrapio
