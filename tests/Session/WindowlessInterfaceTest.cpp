#include "Session/WindowlessInterface.h"

#include "Services/Notifications.h"
#include "Services/WrapioURLBridge.h"

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

TEST(WindowlessInterface, keeps_requests_for_those_who_come_later_and_announces_each) {
    NotificationCenter center;
    WindowlessInterface interface(center);
    int announced = 0;
    const auto observer = center.addObserver(notifications::createAppFromURL, [&announced] { ++announced; });
    interface.start(false);
    interface.activate("token");
    interface.open({u"wrapio://create?url=https%3A%2F%2Fa.example"_s, u"wrapio://create?url=https%3A%2F%2Fb.example"_s},
                   {});
    EXPECT_EQ(announced, 2);
    const auto request = WrapioURLBridge::takePendingCreateRequest();
    ASSERT_TRUE(request);
    EXPECT_EQ(request->url.absoluteString(), u"https://b.example"_s);
}

}  // namespace wrapio
