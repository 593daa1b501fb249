#include "Views/DashboardWindow.h"

#include "Fakes/ManualScheduler.h"
#include "Fakes/PrintQt.h"
#include "Offline/DashboardScreen.h"
#include "Services/Notifications.h"
#include "Services/WrapioURLBridge.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

class DashboardWindowTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        static int count = 0;
        static auto* const application = new QGuiApplication(count, nullptr);
        application->setApplicationDisplayName(u"Wrapio"_s);
    }
    DashboardWindowTest() { addTemplatePictures(fixture.resources); }
    void TearDown() override {
        static_cast<void>(WrapioURLBridge::takePendingCreateRequest());
        static_cast<void>(WrapioURLBridge::takePendingImportSessionRequest());
    }

    /// What another program's request does.
    void request(const QString& url) {
        const auto create = WrapioURLBridge::parseCreateRequest(url);
        ASSERT_TRUE(create);
        WrapioURLBridge::setPending(*create);
        notifications.post(notifications::createAppFromURL);
        scheduler.runPending();
    }

    ManualScheduler scheduler;
    OfflineFixture fixture{u"dozen"_s, scheduler};
    NotificationCenter notifications;
    DashboardWindow dashboard{fixture.services(), notifications};
};

const QString createNotes = u"wrapio://create?url=https%3A%2F%2Fnotes.example%2F&title=My%20Notes"_s;

}  // namespace

TEST_F(DashboardWindowTest, costs_nothing_before_it_is_shown) {
    EXPECT_FALSE(dashboard.isOpen());
    EXPECT_FALSE(dashboard.viewModel());
}

TEST_F(DashboardWindowTest, opens_at_its_size_and_gets_no_smaller_than_its_least) {
    ASSERT_TRUE(dashboard.show());
    EXPECT_EQ(dashboard.window()->size(), QSize(1024, 768));
    EXPECT_EQ(dashboard.window()->minimumSize(), QSize(800, 600));
    EXPECT_TRUE(dashboard.window()->isVisible());
}

TEST_F(DashboardWindowTest, shows_the_open_window_again_instead_of_a_second_one) {
    ASSERT_TRUE(dashboard.show());
    const QQuickWindow* const first = dashboard.window();
    dashboard.window()->showMinimized();
    ASSERT_TRUE(dashboard.show(u"token"_s));
    EXPECT_EQ(dashboard.window(), first);
    EXPECT_FALSE(dashboard.window()->windowStates() & Qt::WindowMinimized);
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

TEST_F(DashboardWindowTest, gives_everything_back_when_the_person_closes_it) {
    ASSERT_TRUE(dashboard.show());
    const QPointer<DashboardViewModel> viewModel = dashboard.viewModel();
    const QPointer<QQuickWindow> window = dashboard.window();
    QSignalSpy closed(&dashboard, &DashboardWindow::closed);
    window->close();
    ASSERT_TRUE(closed.count() == 1 || closed.wait());
    EXPECT_FALSE(viewModel);
    EXPECT_FALSE(window);
    EXPECT_FALSE(dashboard.isOpen());
}

TEST_F(DashboardWindowTest, opens_again_after_it_was_closed) {
    ASSERT_TRUE(dashboard.show());
    dashboard.close();
    ASSERT_TRUE(dashboard.show());
    EXPECT_TRUE(dashboard.window()->isVisible());
    EXPECT_EQ(dashboard.viewModel()->appCount(), 12);
}

TEST_F(DashboardWindowTest, leaves_no_record_of_a_new_app_when_it_is_closed_over_its_sheet) {
    ASSERT_TRUE(dashboard.show());
    dashboard.viewModel()->createNewApp();
    EXPECT_EQ(fixture.store().configurations().size(), 13U);
    dashboard.close();
    EXPECT_EQ(fixture.store().configurations().size(), 12U);
}

TEST_F(DashboardWindowTest, takes_a_request_that_arrives_while_it_is_open) {
    ASSERT_TRUE(dashboard.show());
    request(createNotes);
    ASSERT_TRUE(dashboard.viewModel()->editor());
    EXPECT_EQ(dashboard.viewModel()->editor()->configuration().appNameInput(), u"My Notes"_s);
}

TEST_F(DashboardWindowTest, takes_a_request_that_waited_for_it_to_open) {
    request(createNotes);
    EXPECT_EQ(fixture.store().configurations().size(), 12U);
    ASSERT_TRUE(dashboard.show());
    EXPECT_TRUE(dashboard.viewModel()->editor());
    EXPECT_FALSE(WrapioURLBridge::takePendingCreateRequest());
}

TEST_F(DashboardWindowTest, posts_the_reload_command_at_its_shortcut) {
    ASSERT_TRUE(dashboard.show());
    ASSERT_TRUE(QTest::qWaitForWindowActive(dashboard.window()));
    int reloads = 0;
    const Subscription listening = notifications.addObserver(notifications::reloadPage, [&reloads] { ++reloads; });
    QTest::keyClick(dashboard.window(), Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(reloads, 1);
}

TEST_F(DashboardWindowTest, shows_the_form_of_the_selected_app_as_settings) {
    ASSERT_TRUE(dashboard.show());
    dashboard.showSettings();
    bool isShown = false;
    for (const QWindow* window : QGuiApplication::topLevelWindows())
        isShown = isShown || (window->title() == u"Settings"_s && window->isVisible());
    EXPECT_TRUE(isShown);
}

TEST_F(DashboardWindowTest, shows_a_site_with_what_was_set_for_that) {
    QList<QUuid> shown;
    dashboard.setSiteOpener([&shown](const QUuid& app) {
        shown << app;
        return true;
    });
    ASSERT_TRUE(dashboard.show());
    const QUuid app = fixture.store().configurations()[1].id;
    QMetaObject::invokeMethod(dashboard.window(), "websiteRequested", Q_ARG(QString, canonicalText(app)));
    EXPECT_EQ(shown, QList<QUuid>{app});
    EXPECT_FALSE(fixture.workspace.log.contains(u"open https://calendar.example.com/"_s));
}

TEST_F(DashboardWindowTest, shows_a_site_in_the_default_browser_when_it_cannot_be_shown_here) {
    dashboard.setSiteOpener([](const QUuid&) { return false; });
    ASSERT_TRUE(dashboard.show());
    const QUuid app = fixture.store().configurations()[1].id;
    QMetaObject::invokeMethod(dashboard.window(), "websiteRequested", Q_ARG(QString, canonicalText(app)));
    EXPECT_TRUE(fixture.workspace.log.contains(u"open https://calendar.example.com/"_s));
}

TEST_F(DashboardWindowTest, has_accessible_names_for_everything_that_can_be_reached) {
    ASSERT_TRUE(dashboard.show());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dashboard.window()));
    int reachable = 0;
    for (const QQuickItem* item : dashboard.window()->findChildren<QQuickItem*>()) {
        if (!item->activeFocusOnTab() || !item->isVisible())
            continue;
        ++reachable;
        const auto* const interface = QAccessible::queryAccessibleInterface(const_cast<QQuickItem*>(item));
        ASSERT_TRUE(interface) << item->metaObject()->className();
        EXPECT_NE(interface->text(QAccessible::Name), QString()) << item->metaObject()->className();
    }
    EXPECT_GE(reachable, 4);
}

}  // namespace wrapio
