#include "Services/BundleGenerator.h"

#include "Fakes/FakeHttpClient.h"
#include "Fakes/FakeResources.h"
#include "Fakes/TestImages.h"
#include "Platform/PropertyList.h"
#include "Services/ServiceFixture.h"

#include <nlohmann/json.hpp>

#include <limits>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

const QString codesign = u"/usr/bin/codesign"_s;
const QString iconutil = u"/usr/bin/iconutil"_s;
const QByteArray templateInformation = R"(<plist version="1.0"><dict>
<key>CFBundleExecutable</key><string>WrapioRunner</string>
<key>CFBundleIconName</key><string>Runner</string>
<key>CFBundleIdentifier</key><string>com.wrapio.runner</string>
<key>CFBundleShortVersionString</key><string>3.1</string>
<key>Deep</key><dict><key>Inner</key><array><integer>7</integer></array></dict>
</dict></plist>)";

class BundleGeneratorTest : public ServiceFixture {
protected:
    FakeHttpClient http;
    FakeResources resources;
    FaviconService favicons{http, files, directories};
    IconService icons{tools, files};
    LaunchServicesManager launchServices{tools, files, workspace, directories};
    VersionManager versions{resources, files};
    BundleGenerator generator{tools, files, resources, favicons, icons, launchServices, versions};
    QString target = directories.generatedApps();
    QString bundle = target + u"/Mail.app"_s;
    AppConfiguration app;

    BundleGeneratorTest() {
        const QString runner = temporary.path(u"share/WrapioRunner.app"_s);
        resources.paths[u"WrapioRunner.app"_s] = runner;
        EXPECT_TRUE(temporary.createDirectories(runner + u"/Contents/Linux"_s));
        EXPECT_TRUE(temporary.createDirectories(runner + u"/Contents/Resources"_s));
        EXPECT_TRUE(temporary.createDirectories(target));
        EXPECT_TRUE(temporary.write(runner + u"/Contents/Info.plist"_s, templateInformation));
        EXPECT_TRUE(temporary.write(runner + u"/Contents/Linux/WrapioRunner"_s, "program"));
        tools.answer(iconutil, [this](const QStringList& arguments) -> tl::expected<ToolResult, LaunchError> {
            EXPECT_TRUE(temporary.write(arguments.at(4), "icns"));
            return ToolResult{};
        });
        app.id = QUuid(u"{3f2a9c01-5d0f-4c51-9a57-3e1f6b1d2a40}"_s);
        app.configuredURL = WebAddress::parse(u"https://mail.example.com/inbox"_s);
        app.appName = u"Mail"_s;
    }

    QByteArray contents(const QString& relative) const {
        const auto bytes = temporary.read(bundle + u'/' + relative, 1 << 20);
        EXPECT_TRUE(bytes) << relative.toStdString();
        return bytes.value_or(QByteArray());
    }
    nlohmann::ordered_json config() const {
        return nlohmann::ordered_json::parse(contents(u"Contents/Resources/config.json"_s).toStdString());
    }
    std::vector<std::string> configKeys() const {
        std::vector<std::string> keys;
        const auto object = config();
        for (const auto& [key, value] : object.items())
            keys.push_back(key);
        return keys;
    }
    template <typename Error>
    static Error errorOf(const tl::expected<QString, AnyError>& result, Error otherwise) {
        const Error* const error = result ? nullptr : result.error().as<Error>();
        EXPECT_NE(error, nullptr);
        return error ? *error : otherwise;
    }
    static GeneratorError generatorErrorOf(const tl::expected<QString, AnyError>& result) {
        return errorOf(result, GeneratorError::destinationExists());
    }
    QStringList commandLines() const {
        QStringList lines;
        for (const auto& [path, arguments] : tools.calls())
            lines << path.section(u'/', -1) + u' ' + arguments.join(u' ');
        return lines;
    }
};

TEST_F(BundleGeneratorTest, CopiesTheTemplateSignsAndRegistersTheBundle) {
    const auto result = generator.generate(app, target);
    ASSERT_TRUE(result);
    EXPECT_EQ(*result, bundle);
    EXPECT_EQ(contents(u"Contents/Linux/WrapioRunner"_s), "program");
    EXPECT_EQ(commandLines(),
              (QStringList{u"codesign --force --deep --sign - "_s + bundle, u"lsregister -f "_s + bundle}));
    EXPECT_EQ(tools.calls().front().path, codesign);
    EXPECT_EQ(tools.calls().front().arguments, (QStringList{u"--force"_s, u"--deep"_s, u"--sign"_s, u"-"_s, bundle}));
}

TEST_F(BundleGeneratorTest, PersonalisesThePropertyListAndKeepsTheRest) {
    app.appName = u"My <Mail>: & more"_s;
    bundle = target + u"/My Mail & more.app"_s;
    ASSERT_TRUE(generator.generate(app, target));
    const QByteArray xml = contents(u"Contents/Info.plist"_s);
    EXPECT_TRUE(xml.startsWith("<?xml"));
    const auto list = PropertyList::parse(xml);
    ASSERT_TRUE(list);
    EXPECT_EQ(list->text("CFBundleDisplayName"), app.appName);
    EXPECT_EQ(list->text("CFBundleName"), app.appName);
    EXPECT_EQ(list->text("CFBundleIdentifier"), u"com.wrapio.generated.my-mail--more-3f2a9c01"_s);
    EXPECT_EQ(list->text("CFBundleIconFile"), u"AppIcon"_s);
    EXPECT_EQ(list->text("CFBundleExecutable"), u"WrapioRunner"_s);
    EXPECT_EQ(list->text("CFBundleShortVersionString"), u"3.1"_s);
    EXPECT_EQ(list->urlSchemes(), std::vector{u"wrapio-3f2a9c01-5d0f-4c51-9a57-3e1f6b1d2a40"_s});
    EXPECT_TRUE(xml.contains("<key>CFBundleURLName</key>"));
    EXPECT_TRUE(xml.contains("<key>Inner</key>"));
    EXPECT_TRUE(xml.contains("<integer>7</integer>"));
}

TEST_F(BundleGeneratorTest, TakesTheIconOfTheTemplatesCatalogueAway) {
    ASSERT_TRUE(generator.generate(app, target));
    EXPECT_FALSE(contents(u"Contents/Info.plist"_s).contains("CFBundleIconName"));
}

TEST_F(BundleGeneratorTest, StartsFromAnEmptyPropertyListWhenItCannotBeRead) {
    for (const QByteArray& broken : {QByteArray("broken"), QByteArray("<plist><array/></plist>")}) {
        ASSERT_TRUE(temporary.write(*resources.path(u"WrapioRunner"_s, u"app"_s) + u"/Contents/Info.plist"_s, broken));
        ASSERT_TRUE(generator.generate(app, target));
        const auto list = PropertyList::parse(contents(u"Contents/Info.plist"_s));
        ASSERT_TRUE(list);
        EXPECT_EQ(list->text("CFBundleName"), u"Mail"_s);
        EXPECT_FALSE(list->text("CFBundleExecutable"));
    }
}

TEST_F(BundleGeneratorTest, WritesTheShortestConfiguration) {
    ASSERT_TRUE(generator.generate(app, target));
    EXPECT_EQ(contents(u"Contents/Resources/config.json"_s), R"({
  "url": "https://mail.example.com/inbox",
  "name": "Mail",
  "userAgent": "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/605.1.15 (KHTML, like Gecko) Version/17.4 Safari/605.1.15",
  "allowedHosts": [],
  "runnerVersion": "3.1",
  "badgeEnabled": true
})");
}

TEST_F(BundleGeneratorTest, WritesTheFullestConfiguration) {
    app.runnerVersion = u"0.9"_s;
    app.customUserAgent = u"Agent \"7\""_s;
    app.allowedHosts = {u"a.example"_s, u"b.example"_s};
    app.badgeEnabled = false;
    app.customCSS = u"a{}"_s;
    app.customJS = u"go()\n"_s;
    app.jsInjectionTime = JSInjectionTime::documentStart;
    app.themeColor = u""_s;
    app.themeOpacity = 0.5;
    app.themeBorderEnabled = true;
    app.isDevMode = true;
    ASSERT_TRUE(generator.generate(app, target));
    EXPECT_EQ(contents(u"Contents/Resources/config.json"_s), R"({
  "url": "https://mail.example.com/inbox",
  "name": "Mail",
  "userAgent": "Agent \"7\"",
  "allowedHosts": [
    "a.example",
    "b.example"
  ],
  "runnerVersion": "3.1",
  "badgeEnabled": false,
  "customCSS": "a{}",
  "customJS": "go()\n",
  "jsInjectionTime": "documentStart",
  "themeColor": "",
  "themeOpacity": 0.5,
  "themeBorderEnabled": true,
  "isDevMode": true
})");
}

TEST_F(BundleGeneratorTest, LeavesOutAnEmptyScriptAndItsInjectionTime) {
    app.customJS = u""_s;
    app.customCSS = u""_s;
    ASSERT_TRUE(generator.generate(app, target));
    EXPECT_EQ(configKeys(),
              (std::vector<std::string>{"url", "name", "userAgent", "allowedHosts", "runnerVersion", "badgeEnabled"}));
}

TEST_F(BundleGeneratorTest, AnEmptyUserAgentIsOneToo) {
    app.customUserAgent = u""_s;
    ASSERT_TRUE(generator.generate(app, target));
    EXPECT_EQ(config()["userAgent"], "");
}

TEST_F(BundleGeneratorTest, WritesTextsOfAnyKindAsValidJson) {
    app.customJS = u"\u0000 😀 \xD800 \u2028 \"\\"_s;
    ASSERT_TRUE(generator.generate(app, target));
    EXPECT_TRUE(config()["customJS"].is_string());
}

TEST_F(BundleGeneratorTest, ReplacesABundleCompletely) {
    ASSERT_TRUE(temporary.createDirectories(bundle + u"/Contents/Old"_s));
    ASSERT_TRUE(generator.generate(app, target));
    EXPECT_FALSE(temporary.exists(bundle + u"/Contents/Old"_s));
    EXPECT_TRUE(temporary.exists(bundle + u"/Contents/Info.plist"_s));
}

TEST_F(BundleGeneratorTest, WritesUnderANameWithoutDots) {
    app.appName = u"../draw.io"_s;
    EXPECT_EQ(generator.generate(app, target), target + u"/drawio.app"_s);
}

TEST_F(BundleGeneratorTest, RefusesANameOfWhichNothingIsLeftBeforeAFileIsTouched) {
    for (const QString& name : {u"../.."_s, u":*?"_s, u"   "_s, u"\n\u200B"_s}) {
        app.appName = name;
        EXPECT_EQ(generatorErrorOf(generator.generate(app, target)), GeneratorError::invalidAppName());
    }
    EXPECT_TRUE(files.log.isEmpty());
    EXPECT_TRUE(tools.calls().empty());
}

TEST_F(BundleGeneratorTest, SaysThatTheTemplateIsMissingAndTouchesNothing) {
    ASSERT_TRUE(temporary.createDirectories(bundle));
    resources.paths.clear();
    DiagnosticsCapture output;
    EXPECT_EQ(generatorErrorOf(generator.generate(app, target)), GeneratorError::templateNotFound());
    EXPECT_EQ(output.lines(),
              QStringList(u"❌ [BundleGenerator] Template 'WrapioRunner.app' not found in bundle resources."_s));
    EXPECT_TRUE(temporary.exists(bundle));
}

TEST_F(BundleGeneratorTest, LeavesAnOldBundleThatCannotBeRemoved) {
    ASSERT_TRUE(temporary.createDirectories(bundle + u"/Contents/Old"_s));
    failWhere(u"remove"_s, u"Mail.app"_s, EBUSY);
    const auto result = generator.generate(app, target);
    EXPECT_EQ(errorOf(result, FileError{}), (FileError{u"remove"_s, bundle, EBUSY}));
    EXPECT_TRUE(temporary.exists(bundle + u"/Contents/Old"_s));
    EXPECT_EQ(files.log, QStringList(u"remove "_s + bundle));
}

TEST_F(BundleGeneratorTest, PassesOnThatTheCopyFailed) {
    failWhere(u"copyTree"_s, u"Mail.app"_s, ENOSPC);
    const auto result = generator.generate(app, target);
    EXPECT_EQ(errorOf(result, FileError{}).code, ENOSPC);
    EXPECT_FALSE(temporary.exists(bundle));
    EXPECT_TRUE(tools.calls().empty());
}

TEST_F(BundleGeneratorTest, AnAppWithoutAnAddressHasNoBundle) {
    app.configuredURL.reset();
    EXPECT_EQ(generatorErrorOf(generator.generate(app, target)), GeneratorError::configurationError());
    EXPECT_FALSE(temporary.exists(bundle));
}

TEST_F(BundleGeneratorTest, AnOpacityThatIsNoNumberHasNoBundle) {
    app.themeOpacity = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(errorOf(generator.generate(app, target), SerializationError{}).reason.isEmpty());
    EXPECT_FALSE(temporary.exists(bundle));
}

struct Fault {
    const char* name;
    QString operation;
    QString ending;
};
class BundleGeneratorFaultTest : public BundleGeneratorTest, public testing::WithParamInterface<Fault> {};

TEST_P(BundleGeneratorFaultTest, LeavesNoHalfMadeBundle) {
    ASSERT_TRUE(favicons.saveIcon(plainImage(64, 64), app.id));
    failWhere(GetParam().operation, GetParam().ending, ENOSPC);
    const auto result = generator.generate(app, target);
    EXPECT_EQ(errorOf(result, FileError{}).code, ENOSPC);
    EXPECT_FALSE(temporary.exists(bundle));
    EXPECT_FALSE(commandLines().contains(u"lsregister -f "_s + bundle));
}

INSTANTIATE_TEST_SUITE_P(Operations, BundleGeneratorFaultTest,
                         testing::Values(Fault{"WritingThePropertyList", u"write"_s, u"Info.plist"_s},
                                         Fault{"MakingTheResources", u"createDirectories"_s, u"/Resources"_s},
                                         Fault{"WritingTheConfiguration", u"write"_s, u"config.json"_s},
                                         Fault{"WritingAnIcon", u"write"_s, u"icon_16x16.png"_s},
                                         Fault{"MovingTheIcon", u"move"_s, u"AppIcon.icns"_s}),
                         [](const auto& parameter) { return parameter.param.name; });

TEST_F(BundleGeneratorTest, ReportsTheStepThatFailedEvenWhenTheBundleCannotBeRemoved) {
    files.fault = [](const QString& operation, const QString& path) -> std::optional<int> {
        if (operation == u"remove"_s)
            return EBUSY;
        return operation == u"write"_s && path.endsWith(u"config.json"_s) ? std::optional(ENOSPC) : std::nullopt;
    };
    EXPECT_EQ(errorOf(generator.generate(app, target), FileError{}).code, ENOSPC);
}

TEST_F(BundleGeneratorTest, PutsTheSavedIconIntoTheBundle) {
    ASSERT_TRUE(favicons.saveIcon(plainImage(64, 64), app.id));
    ASSERT_TRUE(generator.generate(app, target));
    EXPECT_EQ(contents(u"Contents/Resources/AppIcon.icns"_s), "icns");
    EXPECT_EQ(*temporary.list(bundle + u"/Contents/Resources"_s), (std::vector{u"AppIcon.icns"_s, u"config.json"_s}));
    const QStringList lines = commandLines();
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[0].startsWith(u"iconutil -c icns "_s + bundle + u"/Contents/Resources/"_s));
    EXPECT_TRUE(lines[1].startsWith(u"codesign "_s));
    EXPECT_TRUE(lines[2].startsWith(u"lsregister "_s));
}

TEST_F(BundleGeneratorTest, TakesTheIconAsItIsEvenWhenAnotherOneWasPrepared) {
    QColor colorOfTheIcon;
    tools.answer(iconutil, [&](const QStringList& arguments) -> tl::expected<ToolResult, LaunchError> {
        colorOfTheIcon = QImage(arguments.at(2) + u"/icon_16x16.png"_s).pixelColor(8, 8);
        EXPECT_TRUE(temporary.write(arguments.at(4), "icns"));
        return ToolResult{};
    });
    ASSERT_TRUE(favicons.saveIcon(plainImage(64, 64, Qt::red), app.id));
    generator.prepare(app);
    ASSERT_TRUE(generator.generate(app, target));
    EXPECT_EQ(colorOfTheIcon, QColor(Qt::red));
    generator.prepare(app);
    ASSERT_TRUE(favicons.saveIcon(plainImage(64, 64, Qt::blue), app.id));
    ASSERT_TRUE(generator.generate(app, target));
    EXPECT_EQ(colorOfTheIcon, QColor(Qt::blue));
}

TEST_F(BundleGeneratorTest, KeepsTheTemplatesIconWithoutASavedOneAndSaysNothing) {
    ASSERT_TRUE(temporary.createDirectories(*directories.applicationSupport + u"/Wrapio"_s));
    ASSERT_TRUE(
        temporary.write(*directories.applicationSupport + u"/Wrapio/"_s + canonicalText(app.id) + u".png"_s, "broken"));
    DiagnosticsCapture output;
    ASSERT_TRUE(generator.generate(app, target));
    EXPECT_TRUE(output.lines().isEmpty());
    EXPECT_FALSE(temporary.exists(bundle + u"/Contents/Resources/AppIcon.icns"_s));
    EXPECT_EQ(commandLines().size(), 2);
}

TEST_F(BundleGeneratorTest, AFailedIconConversionRemovesTheBundle) {
    ASSERT_TRUE(favicons.saveIcon(plainImage(64, 64), app.id));
    tools.answer(iconutil, ToolResult{1, {}, "bad"});
    const auto result = generator.generate(app, target);
    EXPECT_EQ(errorOf(result, IconServiceError::invalidImageData()), IconServiceError::iconutilFailed(u"bad"_s));
    EXPECT_FALSE(temporary.exists(bundle));
}

TEST_F(BundleGeneratorTest, AFailedSignatureRemovesTheBundleAndReportsTheStatus) {
    tools.answer(codesign, ToolResult{7, "ignored", " \n no identity \u00A0\n"});
    DiagnosticsCapture output;
    const auto result = generator.generate(app, target);
    EXPECT_EQ(errorOf(result, CodeSigningError{}),
              (CodeSigningError{u"BundleGenerator"_s, 7, u"Code signing failed"_s, u"no identity"_s}));
    EXPECT_EQ(result.error().description(), u"Code signing failed"_s);
    const QStringList lines = output.lines();
    ASSERT_GE(lines.size(), 2);
    EXPECT_EQ(lines[0], u"❌ [BundleGenerator] Code signing failed with status 7"_s);
    EXPECT_EQ(lines.mid(1).join(u'\n'), u"   Error output:  \n no identity \u00A0\n"_s);
    EXPECT_FALSE(temporary.exists(bundle));
}

TEST_F(BundleGeneratorTest, ASignatureToolWhoseOutputIsNoTextSaysUnknownError) {
    tools.answer(codesign, ToolResult{1, {}, "\xC3"});
    DiagnosticsCapture output;
    EXPECT_EQ(errorOf(generator.generate(app, target), CodeSigningError{}).failureReason, u"Unknown error"_s);
    EXPECT_EQ(output.lines().last(), u"   Error output: Unknown error"_s);
}

TEST_F(BundleGeneratorTest, ASignatureToolThatDoesNotStartRemovesTheBundle) {
    tools.remove(codesign);
    EXPECT_EQ(errorOf(generator.generate(app, target), LaunchError{}).path, codesign);
    EXPECT_FALSE(temporary.exists(bundle));
}

TEST_F(BundleGeneratorTest, AFailedRegistrationIsAWarningOnly) {
    tools.answer(u"/System/Library/Frameworks/CoreServices.framework/Frameworks/LaunchServices.framework/Support/"
                 u"lsregister"_s,
                 ToolResult{1, {}, "busy"});
    DiagnosticsCapture output;
    EXPECT_EQ(generator.generate(app, target), bundle);
    EXPECT_EQ(output.lines().last(),
              u"⚠️ [BundleGenerator] Failed to register with Launch Services: lsregister failed: busy"_s);
    EXPECT_TRUE(temporary.exists(bundle));
}

TEST_F(BundleGeneratorTest, ItsErrorsDescribeThemselvesByNumber) {
    EXPECT_EQ(GeneratorError::directoryCreationFailed(u"x"_s).description(),
              u"The operation couldn’t be completed. (Wrapio.GeneratorError error 0.)"_s);
    EXPECT_EQ(GeneratorError::configurationError().description(),
              u"The operation couldn’t be completed. (Wrapio.GeneratorError error 5.)"_s);
}

}  // namespace
}  // namespace wrapio
