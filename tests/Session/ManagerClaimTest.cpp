#include "Session/ManagerClaim.h"

#include "Fakes/FakeLocalServer.h"
#include "Fakes/ManualScheduler.h"
#include "Fakes/PrintQt.h"

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

class FakeLock final : public CatalogueLock {
public:
    tl::expected<void, CatalogueBusy> acquire(double seconds) override {
        patience.push_back(seconds);
        if (isHeldElsewhere)
            return tl::unexpected(CatalogueBusy{.reason = u"busy"_s, .isHopeless = isHopeless});
        return {};
    }
    bool isHeldElsewhere = false;
    bool isHopeless = false;
    std::vector<double> patience;
};

}  // namespace

class ManagerClaimTest : public testing::Test {
protected:
    void start() {
        claim.start(60, {[this] { outcomes << u"manager"_s; },
                         [this](std::unique_ptr<LocalChannel>) { outcomes << u"answered"_s; },
                         [this](const CatalogueBusy& busy) { outcomes << busy.description(); }});
    }
    void startAnotherManager() {
        ASSERT_TRUE(server.open([](std::unique_ptr<LocalChannel>) {}));
    }

    ManualScheduler scheduler;
    FakeLocalServer server{scheduler};
    FakeLock lock;
    QStringList outcomes;
    ManagerClaim claim{lock, [this] { return server.call(); }, scheduler};
};

TEST_F(ManagerClaimTest, the_first_becomes_the_manager_at_once) {
    start();
    EXPECT_EQ(outcomes, QStringList(u"manager"_s));
}

TEST_F(ManagerClaimTest, the_second_is_answered_and_leaves_the_lock_alone) {
    startAnotherManager();
    start();
    EXPECT_EQ(outcomes, QStringList(u"answered"_s));
    EXPECT_TRUE(lock.patience.empty());
}

TEST_F(ManagerClaimTest, a_command_that_holds_the_catalogue_is_waited_for) {
    lock.isHeldElsewhere = true;
    start();
    scheduler.advance(30);
    EXPECT_TRUE(outcomes.isEmpty());
    lock.isHeldElsewhere = false;
    scheduler.advance(0.05);
    EXPECT_EQ(outcomes, QStringList(u"manager"_s));
}

TEST_F(ManagerClaimTest, a_manager_that_came_first_answers_as_soon_as_it_can) {
    lock.isHeldElsewhere = true;
    start();
    scheduler.advance(1);
    startAnotherManager();
    scheduler.advance(0.05);
    EXPECT_EQ(outcomes, QStringList(u"answered"_s));
}

TEST_F(ManagerClaimTest, a_catalogue_that_cannot_be_locked_at_all_is_not_waited_for) {
    lock.isHeldElsewhere = lock.isHopeless = true;
    start();
    EXPECT_EQ(outcomes, QStringList(u"busy"_s));
}

TEST_F(ManagerClaimTest, waiting_neither_blocks_nor_lasts_for_ever) {
    lock.isHeldElsewhere = true;
    start();
    scheduler.advance(59.9);
    EXPECT_TRUE(outcomes.isEmpty());
    scheduler.advance(0.2);
    EXPECT_EQ(outcomes, QStringList(u"busy"_s));
    EXPECT_EQ(lock.patience, std::vector<double>(lock.patience.size(), 0.0));
    scheduler.advance(10);
    EXPECT_EQ(outcomes.size(), 1);
}

}  // namespace wrapio
