#include "Services/URLRequestRouter.h"

#include "Fakes/DiagnosticsCapture.h"
#include "Fakes/PrintQt.h"
#include "Services/Notifications.h"
#include "Services/WrapioURLBridge.h"

namespace wrapio {

using namespace Qt::StringLiterals;

class URLRequestRouterTest : public testing::Test {
protected:
    ~URLRequestRouterTest() override {
        static_cast<void>(WrapioURLBridge::takePendingCreateRequest());
        static_cast<void>(WrapioURLBridge::takePendingImportSessionRequest());
    }

    QStringList log;
    NotificationCenter center;
    URLRequestRouter router{center, {[this] { log << u"activate"_s; }, [this] { log << u"show"_s; }}};
    Subscription create = center.addObserver("createAppFromURL", [this] { log << u"create"_s; });
    Subscription import = center.addObserver("importSessionFromURL", [this] { log << u"import"_s; });
};

TEST_F(URLRequestRouterTest, activates_shows_stores_and_posts_in_this_order_for_a_create_request) {
    const auto stored = center.addObserver(notifications::createAppFromURL, [this] {
        log << WrapioURLBridge::takePendingCreateRequest()->url.absoluteString();
    });
    router.handleIncomingURL(u"wrapio://create?url=https://e.example"_s);
    EXPECT_EQ(log, QStringList({u"activate"_s, u"show"_s, u"create"_s, u"https://e.example"_s}));
}

TEST_F(URLRequestRouterTest, does_the_same_for_an_import_session_request) {
    router.handleIncomingURL(u"wrapio://import-session?url=https://e.example&source=B"_s);
    EXPECT_EQ(log, QStringList({u"activate"_s, u"show"_s, u"import"_s}));
    EXPECT_EQ(WrapioURLBridge::takePendingImportSessionRequest()->source, u"B"_s);
}

TEST_F(URLRequestRouterTest, leaves_the_slot_alone_until_the_window_is_shown) {
    bool waiting = true;
    URLRequestRouter looking(center,
                             {[] {}, [&] { waiting = WrapioURLBridge::takePendingCreateRequest().has_value(); }});
    looking.handleIncomingURL(u"wrapio://create?url=https://e.example"_s);
    EXPECT_FALSE(waiting);
    EXPECT_TRUE(WrapioURLBridge::takePendingCreateRequest());
}

TEST_F(URLRequestRouterTest, reports_an_unsupported_address_and_leaves_the_program_where_it_is) {
    DiagnosticsCapture capture;
    router.handleIncomingURL(u"wrapio://create?url=ftp://e.example"_s);
    EXPECT_EQ(capture.lines(),
              QStringList(u"⚠️ [URLBridge] Unsupported Wrapio URL: wrapio://create?url=ftp://e.example"_s));
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(URLRequestRouterTest, handles_several_addresses_one_by_one_and_keeps_the_last_of_each_kind) {
    for (const QString& url :
         {u"wrapio://create?url=https://one.example"_s, u"wrapio://create?url=https://two.example"_s,
          u"wrapio://import-session?url=https://three.example"_s})
        router.handleIncomingURL(url);
    EXPECT_EQ(log.filter(u"create"_s).size(), 2);
    EXPECT_EQ(log.filter(u"import"_s).size(), 1);
    EXPECT_EQ(WrapioURLBridge::takePendingCreateRequest()->url.absoluteString(), u"https://two.example"_s);
}

}  // namespace wrapio
