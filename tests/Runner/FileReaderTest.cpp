#include "RunnerCore/FileReader.h"

#include "Runner/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace wrapio {
namespace {

TEST(FileReader, AFileIsReadWhole) {
    const test::TemporaryFolder folder;
    const std::string bytes(200'000, '\x7f');
    EXPECT_EQ(readSmallFile(folder.write("a", bytes), 200'000).value(), bytes);
    EXPECT_EQ(readSmallFile(folder.write("b", ""), 10).value(), "");
}

TEST(FileReader, OneByteTooManyIsRefused) {
    const test::TemporaryFolder folder;
    const auto read = readSmallFile(folder.write("a", "12345"), 4);
    ASSERT_FALSE(read);
    EXPECT_EQ(std::get<FileTooLarge>(read.error()).limit, 4U);
}

TEST(FileReader, AnEndlessFileIsRefused) {
    EXPECT_FALSE(readSmallFile("/dev/zero", 100));
}

TEST(FileReader, APipeDoesNotBlock) {
    const test::TemporaryFolder folder;
    const auto pipe = folder.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const auto read = readSmallFile(pipe, 100);
    ASSERT_FALSE(read);
    EXPECT_TRUE(std::holds_alternative<FileUnreadable>(read.error()));
}

TEST(FileReader, AFolderIsUnreadableAndAnAbsentFileMissing) {
    const test::TemporaryFolder folder;
    EXPECT_TRUE(std::holds_alternative<FileUnreadable>(readSmallFile(folder.path(), 100).error()));
    EXPECT_TRUE(std::holds_alternative<FileMissing>(readSmallFile(folder.path() / "x", 100).error()));
    EXPECT_TRUE(std::holds_alternative<FileMissing>(readSmallFile(folder.write("a", "") / "x", 100).error()));
}

}  // namespace
}  // namespace wrapio
