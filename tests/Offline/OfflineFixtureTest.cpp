#include "Offline/OfflineFixture.h"

#include "Fakes/ManualScheduler.h"
#include "Fakes/PrintQt.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

struct Expected {
    QString fixture;
    int apps;
    int running;
    int outdated;
};

void PrintTo(const Expected& expected, std::ostream* out) {
    *out << expected.fixture.toStdString();
}

class OfflineFixtureTest : public testing::TestWithParam<Expected> {};

}  // namespace

TEST_P(OfflineFixtureTest, holds_what_its_name_says) {
    ManualScheduler scheduler;
    OfflineFixture fixture(GetParam().fixture, scheduler);
    scheduler.advance(1.0);
    EXPECT_EQ(fixture.dashboard().appCount(), GetParam().apps);
    EXPECT_EQ(fixture.dashboard().appList()->count(), GetParam().apps);
    EXPECT_EQ(static_cast<int>(fixture.lifecycle().runningAppIds().size()), GetParam().running);
    EXPECT_EQ(fixture.dashboard().outdatedCount(), GetParam().outdated);
}

INSTANTIATE_TEST_SUITE_P(Fixtures, OfflineFixtureTest,
                         testing::Values(Expected{u"empty"_s, 0, 0, 0}, Expected{u"one"_s, 1, 0, 0},
                                         Expected{u"dozen"_s, 12, 0, 0}, Expected{u"thousand"_s, 1000, 0, 0},
                                         Expected{u"running"_s, 12, 4, 0}, Expected{u"outdated"_s, 12, 0, 9},
                                         Expected{u"failing"_s, 12, 0, 0}),
                         [](const auto& row) { return row.param.fixture.toStdString(); });

TEST(OfflineFixtures, are_all_among_the_names) {
    EXPECT_EQ(OfflineFixture::names().size(), 7);
}

TEST(OfflineFixtures, fail_to_launch_in_the_failing_one) {
    ManualScheduler scheduler;
    OfflineFixture fixture(u"failing"_s, scheduler);
    fixture.dashboard().launchApp(fixture.store().configurations().front());
    ASSERT_TRUE(fixture.dashboard().errorData());
    EXPECT_EQ(fixture.dashboard().errorData()->title, u"Launch Failed"_s);
}

TEST(OfflineFixtures, are_updated_as_the_real_thing_is) {
    ManualScheduler scheduler;
    OfflineFixture fixture(u"outdated"_s, scheduler);
    fixture.dashboard().updateAllApps();
    scheduler.runPending();
    EXPECT_EQ(fixture.dashboard().outdatedCount(), 0);
}

TEST(OfflineFixtures, have_the_same_ids_in_every_run) {
    ManualScheduler scheduler;
    const OfflineFixture one(u"one"_s, scheduler);
    OfflineFixture another(u"dozen"_s, scheduler);
    EXPECT_EQ(another.store().configurations().front().id, QUuid::createUuidV5(QUuid(), u"offline/Mail"_s));
}

}  // namespace wrapio
