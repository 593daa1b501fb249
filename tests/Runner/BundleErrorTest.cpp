#include "RunnerCore/BundleError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace wrapio {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(BundleError, EveryMessageSaysWhatToDo) {
    const std::vector<BundleError> errors{NotInBundle{"/bin/x"},      FileMissing{"/a"},
                                          FileUnreadable{"/a", "no"}, FileTooLarge{"/a", 2048},
                                          ConfigMalformed{"x"},       AddressUnusable{"ftp://x", "is odd"},
                                          InfoPlistMalformed{"x"}};
    for (const BundleError& error : errors) {
        const Message message = messageFor(error);
        EXPECT_FALSE(message.title.empty());
        EXPECT_THAT(message.body, testing::ContainsRegex("Open Wrapio|regenerate|Start an app"));
    }
}

TEST(BundleError, HostileTextsStayOnOneShortLine) {
    const std::string hostile = "a\nb\x1b[31m" + std::string(100'000, 'x') + "\xff";
    const std::string line = oneLine(messageFor(AddressUnusable{hostile, "is odd"}));
    EXPECT_THAT(line, Not(HasSubstr("\n")));
    EXPECT_THAT(line, Not(HasSubstr("\x1b")));
    EXPECT_LT(line.size(), 1000U);
}

TEST(BundleError, ALimitIsToldInKibibytes) {
    EXPECT_THAT(messageFor(FileTooLarge{"/a", 262'144}).body, HasSubstr("256 KiB"));
}

}  // namespace
}  // namespace wrapio
