#include "Utilities/ObservableProperty.h"

#include <gtest/gtest.h>

#include <string>

namespace wrapio {

TEST(ObservableProperty, tells_the_coming_value_then_assigns_then_tells_that_it_changed) {
    ObservableProperty<int> property(1);
    std::vector<std::string> log;
    const auto before = property.onWillChange([&](const int& next) {
        log.push_back("will " + std::to_string(next) + " is " + std::to_string(property.value()));
    });
    const auto after = property.onDidChange([&] { log.push_back("did " + std::to_string(property.value())); });
    property.set(2);
    EXPECT_EQ(log, (std::vector<std::string>{"will 2 is 1", "did 2"}));
}

TEST(ObservableProperty, announces_equal_values_too) {
    ObservableProperty<int> property(1);
    int told = 0;
    const auto subscription = property.onWillChange([&](const int&) { ++told; });
    property.set(1);
    EXPECT_EQ(told, 1);
}

TEST(ObservableProperty, stops_telling_when_the_subscription_ends) {
    ObservableProperty<int> property;
    int told = 0;
    {
        const auto subscription = property.onDidChange([&] { ++told; });
        property.set(1);
    }
    property.set(2);
    EXPECT_EQ(told, 1);
}

TEST(ObservableProperty, survives_observers_that_end_each_other_and_themselves) {
    ObservableProperty<int> property;
    int told = 0;
    Subscription second;
    Subscription first = property.onDidChange([&] {
        ++told;
        second.end();
        first.end();
    });
    second = property.onDidChange([&] { ++told; });
    property.set(1);
    property.set(2);
    EXPECT_EQ(told, 1);
}

TEST(ObservableProperty, lets_a_subscription_outlive_it) {
    auto property = std::make_unique<ObservableProperty<int>>();
    Subscription subscription = property->onDidChange([] {});
    property.reset();
    subscription.end();
}

}  // namespace wrapio
