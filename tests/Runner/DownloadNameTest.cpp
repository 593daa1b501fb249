#include "RunnerCore/DownloadName.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

TEST(DownloadName, LeavesOrdinaryNames) {
    EXPECT_EQ(safeFileName("Letter to Zoë.pdf"), "Letter to Zoë.pdf");
}

TEST(DownloadName, CannotLeaveItsFolderOrHide) {
    EXPECT_EQ(safeFileName("../../.config/autostart/evil.desktop"), "evil.desktop");
    EXPECT_EQ(safeFileName("C:\\Windows\\evil.exe"), "evil.exe");
    EXPECT_EQ(safeFileName(".bashrc"), "bashrc");
    EXPECT_EQ(safeFileName("..."), "download");
    EXPECT_EQ(safeFileName("a/"), "download");
    EXPECT_EQ(safeFileName(""), "download");
}

TEST(DownloadName, LosesControlsAndWhatOtherSystemsRefuse) {
    EXPECT_EQ(safeFileName("a\nb:c\x01?.txt"), "a b_c_.txt");
    EXPECT_EQ(safeFileName("invoice\u202Efdp.exe"), "invoicefdp.exe");
    EXPECT_EQ(safeFileName("\xFF\xFE"), "download");
}

TEST(DownloadName, KeepsItsEndingWhenItIsTooLong) {
    std::string longName;
    for (int i = 0; i < 500; ++i)
        longName += "ë";
    const std::string name = safeFileName(longName + ".pdf");
    EXPECT_LE(name.size(), 180U);
    EXPECT_TRUE(name.ends_with("ë.pdf")) << name;
    EXPECT_TRUE(safeFileName(std::string(300, 'x') + ".tar.gz").ends_with("x.tar.gz"));
}

TEST(DownloadName, IsNumberedBeforeItsEnding) {
    EXPECT_EQ(numberedName("letter.txt", 1), "letter.txt");
    EXPECT_EQ(numberedName("letter.txt", 2), "letter (2).txt");
    EXPECT_EQ(numberedName("archive.tar.gz", 3), "archive (3).tar.gz");
    EXPECT_EQ(numberedName("README", 2), "README (2)");
    EXPECT_EQ(numberedName("a.verylongendingthatisnone", 2), "a.verylongendingthatisnone (2)");
}

}  // namespace
}  // namespace wrapio
