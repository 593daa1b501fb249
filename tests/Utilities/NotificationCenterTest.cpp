#include "Utilities/NotificationCenter.h"

#include <gtest/gtest.h>

namespace wrapio {

TEST(NotificationCenter, tells_the_observers_of_a_name_and_no_others) {
    NotificationCenter center;
    std::string log;
    const Subscription one = center.addObserver("one", [&] { log += '1'; });
    const Subscription oneToo = center.addObserver("one", [&] { log += 'i'; });
    const Subscription two = center.addObserver("two", [&] { log += '2'; });
    center.post("one");
    center.post("nobody");
    center.post("two");
    EXPECT_EQ(log, "1i2");
}

TEST(NotificationCenter, tells_nobody_whose_subscription_has_ended) {
    NotificationCenter center;
    int calls = 0;
    {
        const Subscription short_ = center.addObserver("name", [&] { ++calls; });
        center.post("name");
    }
    center.post("name");
    EXPECT_EQ(calls, 1);
}

TEST(NotificationCenter, may_get_an_observer_while_it_tells_others) {
    NotificationCenter center;
    int late = 0;
    Subscription added;
    const Subscription first =
        center.addObserver("name", [&] { added = center.addObserver("other", [&] { ++late; }); });
    center.post("name");
    center.post("other");
    EXPECT_EQ(late, 1);
}

TEST(NotificationCenter, may_be_gone_before_a_subscription_is) {
    Subscription subscription;
    {
        NotificationCenter center;
        subscription = center.addObserver("name", [] {});
    }
    subscription.end();
}

}  // namespace wrapio
