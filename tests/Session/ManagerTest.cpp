#include "Session/Manager.h"

#include "Fakes/FakeApplicationBus.h"
#include "Fakes/FakeManagerInterface.h"
#include "SessionFixture.h"

#include <cerrno>

namespace wrapio {

using namespace Qt::StringLiterals;

class ManagerTest : public SessionFixture {
protected:
    FakeApplicationBus bus;
    FakeManagerInterface interface;
    CommandRunner runner{commandServices()};
    int ended = 0;
    Manager manager{{server, bus, keeping}, runner, interface, [this] { ++ended; }};
};

TEST_F(ManagerTest, starts_its_windows_once_it_can_be_reached) {
    ASSERT_TRUE(manager.start(true));
    EXPECT_EQ(interface.log, QStringList(u"start in background"_s));
    EXPECT_TRUE(server.isOpen());
    EXPECT_EQ(finish(call({u"list"_s})), ExitStatus::done);
}

TEST_F(ManagerTest, does_what_the_desktop_asks_for) {
    ASSERT_TRUE(manager.start(false));
    bus.calls.activate("one");
    bus.calls.open({u"wrapio://create?url=a"_s, u"wrapio://b"_s}, "two");
    bus.calls.activateAction(u"unheard-of"_s, "three");
    EXPECT_EQ(interface.log, QStringList({u"start"_s, u"activate one"_s, u"open wrapio://create?url=a wrapio://b two"_s,
                                          u"activate three"_s}));
}

TEST_F(ManagerTest, does_what_other_processes_ask_for) {
    ASSERT_TRUE(manager.start(false));
    EXPECT_EQ(finish(call({})), ExitStatus::done);
    EXPECT_EQ(finish(call({u"open"_s, u"wrapio://create?url=https%3A%2F%2Fa.example"_s})), ExitStatus::done);
    EXPECT_EQ(interface.log.mid(1),
              QStringList({u"activate "_s, u"open wrapio://create?url=https%3A%2F%2Fa.example "_s}));
}

TEST_F(ManagerTest, works_without_a_session_bus) {
    bus.isReachable = false;
    ASSERT_TRUE(manager.start(false));
    EXPECT_EQ(interface.log, QStringList(u"start"_s));
    EXPECT_EQ(finish(call({u"list"_s})), ExitStatus::done);
}

TEST_F(ManagerTest, does_not_start_where_no_command_could_reach_it) {
    server.failure = FileError{u"listen at"_s, u"/x"_s, EACCES};
    EXPECT_FALSE(manager.start(false));
    EXPECT_TRUE(interface.log.isEmpty());
}

TEST_F(ManagerTest, ends_when_the_commands_that_run_are_done) {
    ASSERT_TRUE(manager.start(false));
    const auto process = call({u"create"_s, u"a.example"_s});
    scheduler.advance(0);
    manager.quit();
    scheduler.advance(0);
    EXPECT_EQ(ended, 0);
    EXPECT_EQ(finish(process), ExitStatus::done);
    scheduler.advance(0);
    EXPECT_EQ(ended, 1);
}

TEST_F(ManagerTest, waits_ten_seconds_for_them_and_no_longer) {
    ASSERT_TRUE(manager.start(false));
    const auto process = call({u"create"_s, u"a.example"_s});
    scheduler.advance(0);
    manager.quit();
    scheduler.advance(9.9);
    EXPECT_EQ(ended, 0);
    scheduler.advance(0.2);
    EXPECT_EQ(ended, 1);
}

TEST_F(ManagerTest, ends_at_once_when_it_is_told_so_twice) {
    ASSERT_TRUE(manager.start(false));
    const auto process = call({u"create"_s, u"a.example"_s});
    scheduler.advance(0);
    manager.quit();
    manager.quit();
    EXPECT_EQ(ended, 1);
    scheduler.advance(20);
    EXPECT_EQ(ended, 1);
}

}  // namespace wrapio
