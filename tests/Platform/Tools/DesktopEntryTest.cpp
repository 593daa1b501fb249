#include "Platform/Linux/DesktopEntry.h"

#include "Fakes/PrintQt.h"
#include "Platform/Tools/ToolTestSupport.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

DesktopEntry mail() {
    DesktopEntry entry;
    entry.id = u"com.wrapio.generated.mail-0b7c57e2"_s;
    entry.name = u"Mail"_s;
    entry.executable = u"/home/a/Applications/Wrapio Apps/Mail.app/Contents/Linux/WrapioRunner"_s;
    entry.bundlePath = u"/home/a/Applications/Wrapio Apps/Mail.app"_s;
    entry.schemes = {u"wrapio-0b7c57e2"_s};
    entry.editProgram = u"/opt/wrapio/bin/wrapio"_s;
    entry.editArgument = u"0b7c57e2"_s;
    return entry;
}

void expectValid(const QByteArray& bytes) {
    const ScratchFolder scratch;
    const QString path = scratch.path(u"a.b.desktop"_s);
    writeFile(path, bytes);
    const ToolResult result = runProgram(u"/usr/bin/desktop-file-validate"_s, {path});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardOutput, "") << bytes.toStdString();
}

TEST(DesktopEntryTest, AnOrdinaryAppGivesExactlyThisFile) {
    const QByteArray bytes = mail().toBytes();
    EXPECT_EQ(bytes, R"([Desktop Entry]
Type=Application
Name=Mail
Comment=A website as an app, made with Wrapio
Exec="/home/a/Applications/Wrapio Apps/Mail.app/Contents/Linux/WrapioRunner" %u
TryExec=/home/a/Applications/Wrapio Apps/Mail.app/Contents/Linux/WrapioRunner
Icon=com.wrapio.generated.mail-0b7c57e2
StartupWMClass=com.wrapio.generated.mail-0b7c57e2
StartupNotify=true
Terminal=false
Categories=Network;
MimeType=x-scheme-handler/wrapio-0b7c57e2;
X-Wrapio-Bundle=/home/a/Applications/Wrapio Apps/Mail.app
Actions=edit;

[Desktop Action edit]
Name=Edit in Wrapio
Exec="/opt/wrapio/bin/wrapio" edit "0b7c57e2"
)");
    expectValid(bytes);
}

TEST(DesktopEntryTest, WithoutAKnownManagerThereIsNoActionToEdit) {
    DesktopEntry entry = mail();
    entry.editProgram.reset();
    EXPECT_FALSE(entry.toBytes().contains("Action"));
    expectValid(entry.toBytes());
}

TEST(DesktopEntryTest, CharactersOfTheShellAreEscapedTwice) {
    DesktopEntry entry = mail();
    entry.executable = u"/a \"b\" $c `d` \\e"_s;
    EXPECT_TRUE(entry.toBytes().contains("\nExec=\"/a \\\\\"b\\\\\" \\\\$c \\\\`d\\\\` \\\\\\\\e\" %u\n"));
    EXPECT_TRUE(entry.toBytes().contains("\nTryExec=/a \"b\" $c `d` \\\\e\n"));
}

TEST(DesktopEntryTest, ThereIsNoFieldCodeButTheUrl) {
    DesktopEntry entry = mail();
    entry.executable = u"/50% off/%u%f/%%"_s;
    EXPECT_TRUE(entry.toBytes().contains("\"/50%% off/%%u%%f/%%%%\" %u\n"));
    expectValid(entry.toBytes());
}

class AwkwardText : public testing::TestWithParam<std::pair<const char*, QString>> {};

TEST_P(AwkwardText, MakesAValidEntryAsAName) {
    DesktopEntry entry = mail();
    entry.name = GetParam().second;
    expectValid(entry.toBytes());
}

TEST_P(AwkwardText, ComesBackAsThePathOfTheBundle) {
    DesktopEntry entry = mail();
    entry.bundlePath = u"/"_s + GetParam().second;
    entry.executable = entry.bundlePath + u"/x"_s;
    expectValid(entry.toBytes());
    EXPECT_EQ(bundlePathOfDesktopEntry(entry.toBytes()), entry.bundlePath);
}

INSTANTIATE_TEST_SUITE_P(DesktopEntryTest, AwkwardText,
                         testing::Values(std::pair("Quotes", u"say \"hi\" 'there' `now` $HOME"_s),
                                         std::pair("Percent", u"100%u %% off"_s),
                                         std::pair("Backslashes", u"a\\b\\\\n\\"_s),
                                         std::pair("LineBreaks", u"two\nlines\r\nand\ttab"_s),
                                         std::pair("AGroup", u"x\n[Desktop Action evil]\nExec=evil"_s),
                                         std::pair("RightToLeftMarks", u"a\u202Ecod.exe\u200F \u2067b\u2069"_s),
                                         std::pair("Emoji", u"\U0001F468\u200D\U0001F469\u200D\U0001F467 \U0001F388"_s),
                                         std::pair("ThreeHundredCharacters", QString(300, u'ß')),
                                         std::pair("Semicolons", u"a;b=c#d"_s), std::pair("LeadingSpaces", u"  x  "_s)),
                         [](const auto& row) { return std::string(row.param.first); });

TEST(DesktopEntryTest, NamesLoseControlCharactersLineBreaksAndDirectionMarks) {
    EXPECT_EQ(withoutControls(u" \u202Ea\nb\u0007c\u2028d\u200F "_s), u"abcd"_s);
    EXPECT_EQ(withoutControls(u"\u202E\n "_s), QString());
    EXPECT_EQ(withoutControls(u"\U0001F388 größe"_s), u"\U0001F388 größe"_s);
}

TEST(DesktopEntryTest, AnotherProgramsEntryHasNoBundle) {
    EXPECT_FALSE(bundlePathOfDesktopEntry("[Desktop Entry]\nName=x\n"));
    EXPECT_FALSE(bundlePathOfDesktopEntry("[Desktop Action x]\nX-Wrapio-Bundle=/a\n"));
    EXPECT_FALSE(bundlePathOfDesktopEntry(""));
    EXPECT_FALSE(bundlePathOfDesktopEntry(QByteArray(1000, '\0')));
}

TEST(DesktopEntryTest, APathThatEndsInABackslashIsRead) {
    EXPECT_EQ(bundlePathOfDesktopEntry("[Desktop Entry]\nX-Wrapio-Bundle=/a\\\n"), u"/a\\"_s);
    EXPECT_EQ(bundlePathOfDesktopEntry("[Desktop Entry]\nX-Wrapio-Bundle=\\s/a\\\\b"), u" /a\\b"_s);
}

}  // namespace

}  // namespace wrapio
