#include "RunnerCore/LoadTrouble.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace wrapio {
namespace {

using ::testing::HasSubstr;

TlsFaults selfSigned() {
    TlsFaults faults;
    faults.unknownAuthority = true;
    faults.isSelfSigned = true;
    return faults;
}

TEST(LoadTrouble, SaysWhatIsWrongWithACertificate) {
    TlsFaults faults;
    faults.expired = true;
    faults.wrongHost = true;
    const Message message = tlsMessage(faults, "https://example.com/");
    EXPECT_THAT(message.body, HasSubstr("https://example.com/"));
    EXPECT_THAT(message.body, HasSubstr("expired"));
    EXPECT_THAT(message.body, HasSubstr("belongs to another site"));
    EXPECT_THAT(tlsMessage(selfSigned(), "https://a/").body, HasSubstr("signed its certificate itself"));
    EXPECT_THAT(tlsMessage(TlsFaults{}, "https://a/").body, HasSubstr("could not be checked"));
}

TEST(LoadTrouble, OnlyADeveloperMayTrustALocalServer) {
    EXPECT_TRUE(mayTrustForNow(selfSigned(), "localhost", true));
    EXPECT_TRUE(mayTrustForNow(selfSigned(), "192.168.1.20", true));
    EXPECT_FALSE(mayTrustForNow(selfSigned(), "localhost", false));
    EXPECT_FALSE(mayTrustForNow(selfSigned(), "example.com", true));
}

TEST(LoadTrouble, NothingButItsOwnSignatureMayBeWrongWithATrustedServer) {
    TlsFaults unknown;
    unknown.unknownAuthority = true;
    EXPECT_FALSE(mayTrustForNow(unknown, "localhost", true));
    for (bool TlsFaults::*fault :
         {&TlsFaults::expired, &TlsFaults::notYetValid, &TlsFaults::revoked, &TlsFaults::insecure}) {
        TlsFaults faults = selfSigned();
        faults.*fault = true;
        EXPECT_FALSE(mayTrustForNow(faults, "localhost", true));
    }
}

TEST(LoadTrouble, AddressesAndReasonsAreCleanedForTheWindow) {
    const Message message = unreachableMessage("https://a/\u202Eb", "line\nbreak");
    EXPECT_THAT(message.body, HasSubstr("https://a/b"));
    EXPECT_THAT(message.body, HasSubstr("line break."));
}

TEST(LoadTrouble, PausesGrowToHalfAMinute) {
    using namespace std::chrono_literals;
    EXPECT_EQ(pauseBeforeAttempt(0), 1s);
    EXPECT_EQ(pauseBeforeAttempt(1), 2s);
    EXPECT_EQ(pauseBeforeAttempt(4), 16s);
    EXPECT_EQ(pauseBeforeAttempt(5), 30s);
    EXPECT_EQ(pauseBeforeAttempt(1'000'000), 30s);
    EXPECT_EQ(pauseBeforeAttempt(-1), 1s);
}

}  // namespace
}  // namespace wrapio
