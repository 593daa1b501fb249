// What all defaults do, whether they live in memory or in files.

#include "Fakes/FakeUserDefaults.h"
#include "Fakes/PrintErrors.h"
#include "Fakes/PrintQt.h"
#include "Platform/Linux/FileDefaults.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

struct InMemory {
    FakeUserDefaults defaults;
};

struct InFiles {
    QTemporaryDir folder;
    FileDefaults defaults{folder.path() + u"/config/Wrapio"_s};
};

template <typename Place>
struct UserDefaultsContract : testing::Test {
    Place place;
    UserDefaults& defaults = place.defaults;
};

using Places = testing::Types<InMemory, InFiles>;
TYPED_TEST_SUITE(UserDefaultsContract, Places);

TYPED_TEST(UserDefaultsContract, AKeyThatWasNeverSetHasNothing) {
    EXPECT_EQ(this->defaults.data(u"key"_s), std::nullopt);
}

TYPED_TEST(UserDefaultsContract, BytesComeBackAsTheyWere) {
    const QByteArray bytes("\0\xff{\"a\": 1}\r\n", 12);
    ASSERT_TRUE(this->defaults.setData(bytes, u"key"_s));
    EXPECT_EQ(this->defaults.data(u"key"_s), bytes);
}

TYPED_TEST(UserDefaultsContract, NoBytesAreNotTheSameAsNothing) {
    ASSERT_TRUE(this->defaults.setData(QByteArray(), u"key"_s));
    EXPECT_EQ(this->defaults.data(u"key"_s), QByteArray());
}

TYPED_TEST(UserDefaultsContract, TheLastBytesStand) {
    ASSERT_TRUE(this->defaults.setData("a longer text", u"key"_s));
    ASSERT_TRUE(this->defaults.setData("short", u"key"_s));
    EXPECT_EQ(this->defaults.data(u"key"_s), QByteArray("short"));
}

TYPED_TEST(UserDefaultsContract, KeysDoNotDisturbEachOther) {
    ASSERT_TRUE(this->defaults.setData("one", u"key"_s));
    ASSERT_TRUE(this->defaults.setData("two", u"Key"_s));
    ASSERT_TRUE(this->defaults.setData("three", u"key.more"_s));
    EXPECT_EQ(this->defaults.data(u"key"_s), QByteArray("one"));
    EXPECT_EQ(this->defaults.data(u"Key"_s), QByteArray("two"));
}

TYPED_TEST(UserDefaultsContract, ACopyLeavesTheBytesInPlace) {
    ASSERT_TRUE(this->defaults.setData("bytes", u"key"_s));
    const auto copy = this->defaults.preserveCopy(u"key"_s);
    ASSERT_TRUE(copy);
    EXPECT_FALSE(copy->isEmpty());
    EXPECT_EQ(this->defaults.data(u"key"_s), QByteArray("bytes"));
}

TYPED_TEST(UserDefaultsContract, ThereIsNoCopyOfNothing) {
    const auto copy = this->defaults.preserveCopy(u"key"_s);
    ASSERT_FALSE(copy);
    EXPECT_EQ(copy.error().code, ENOENT);
}

}  // namespace
}  // namespace wrapio
