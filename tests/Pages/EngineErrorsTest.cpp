#include "Views/Pages/EngineErrors.h"

#include "Fakes/PrintQt.h"

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

TEST(EngineErrors, tell_a_load_apart_that_something_else_took_the_place_of) {
    const PageError error = engineError(-3, u"net::ERR_ABORTED"_s);
    EXPECT_EQ(error.domain, urlErrorDomain);
    EXPECT_EQ(error.code, cancelledLoad);
}

TEST(EngineErrors, have_one_number_for_whatever_took_too_long) {
    for (const int code : {-7, -118}) {
        EXPECT_EQ(engineError(code, {}).code, timedOutLoad);
        EXPECT_EQ(engineError(code, {}).localizedDescription, u"The request timed out."_s);
    }
}

TEST(EngineErrors, say_in_plain_words_what_happens_often) {
    EXPECT_EQ(engineError(-102, u"net::ERR_CONNECTION_REFUSED"_s).localizedDescription,
              u"Could not connect to the server."_s);
    EXPECT_EQ(engineError(-105, {}).localizedDescription, u"A server with that name could not be found."_s);
    EXPECT_EQ(engineError(-106, {}).localizedDescription, u"There is no connection to the Internet."_s);
    EXPECT_EQ(engineError(-102, {}).domain, engineErrorDomain);
    EXPECT_EQ(engineError(-102, {}).code, -102);
}

TEST(EngineErrors, call_every_trouble_with_certificates_an_insecure_connection) {
    for (const int code : {-200, -202, -299})
        EXPECT_EQ(engineError(code, {}).localizedDescription,
                  u"A secure connection to the server could not be made."_s);
    EXPECT_EQ(engineError(-300, u"Odd"_s).localizedDescription, u"Odd"_s);
}

TEST(EngineErrors, keep_the_engine_s_words_for_the_rest) {
    EXPECT_EQ(engineError(-9, u"net::ERR_UNEXPECTED"_s).localizedDescription, u"net::ERR_UNEXPECTED"_s);
    EXPECT_EQ(engineError(-9, {}).localizedDescription, u"The page could not be loaded."_s);
}

}  // namespace wrapio
