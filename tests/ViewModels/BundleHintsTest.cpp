#include "ViewModels/BundleHints.h"

#include "Fakes/PrintQt.h"

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

TEST(BundlePlaces, agree_for_an_ordinary_name) {
    EXPECT_TRUE(BundlePlaces(u"Mail"_s).agree());
    EXPECT_EQ(BundlePlaces(u"Mail"_s).names(), std::vector<std::string>{"Mail.app"});
}

TEST(BundlePlaces, differ_for_a_name_with_dots_or_separators) {
    EXPECT_EQ(BundlePlaces(u"v1.0"_s).names(), (std::vector<std::string>{"v10.app", "v1.0.app"}));
    EXPECT_EQ(BundlePlaces(u"a/b"_s).names(), (std::vector<std::string>{"ab.app", "a_b.app"}));
}

TEST(BundlePlaces, do_not_agree_when_nothing_can_be_written) {
    EXPECT_FALSE(BundlePlaces(u"..."_s).agree());
    EXPECT_FALSE(BundlePlaces(u"???"_s).agree());
}

TEST(BundlePlaces, overlap_when_any_of_them_is_shared) {
    EXPECT_TRUE(BundlePlaces(u"Mail"_s).overlap(BundlePlaces(u"Mail"_s)));
    EXPECT_TRUE(BundlePlaces(u"a/b"_s).overlap(BundlePlaces(u"ab"_s)));
    EXPECT_TRUE(BundlePlaces(u"a_b"_s).overlap(BundlePlaces(u"a/b"_s)));
    EXPECT_FALSE(BundlePlaces(u"Mail"_s).overlap(BundlePlaces(u"mail"_s)));
}

TEST(BundleHints, know_the_nearest_safe_name) {
    EXPECT_EQ(safeNameFor(u" v1.0: Mail/Home "_s), u"v10 MailHome"_s);
    EXPECT_TRUE(BundlePlaces(safeNameFor(u" v1.0: Mail/Home "_s)).agree());
    EXPECT_EQ(safeNameFor(u"..."_s), QString());
}

TEST(BundleHints, name_the_other_app) {
    EXPECT_TRUE(sharedBundleHint(u"Mail"_s).contains(u"“Mail”"_s));
}

}  // namespace wrapio
