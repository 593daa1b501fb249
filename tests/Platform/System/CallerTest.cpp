#include "Platform/Caller.h"

#include "Fakes/DiagnosticsCapture.h"
#include "Fakes/FakeHttpClient.h"
#include "Fakes/ManualScheduler.h"
#include "Fakes/PrintQt.h"
#include "Platform/CallerKeeping.h"
#include "Platform/Diagnostics.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <thread>

namespace wrapio {

using namespace Qt::StringLiterals;

class CallerTest : public testing::Test {
protected:
    CallerTest() { setDiagnosticsDestination(DiagnosticsDestination::nowhere); }
    ~CallerTest() override { setDiagnosticsDestination(DiagnosticsDestination::standardOutput); }

    CallerPointer listening(QStringList& lines) {
        auto caller = std::make_shared<Caller>();
        caller->diagnostics = [&lines](const QString& line) { lines << line; };
        return caller;
    }

    QStringList one;
    QStringList two;
    ManualScheduler real;
    CallerKeepingScheduler scheduler{real};
};

TEST_F(CallerTest, is_told_what_is_done_for_him_and_nothing_else) {
    printDiagnostics(u"before"_s);
    {
        const CallerScope outer(listening(one));
        printDiagnostics(u"outer"_s);
        {
            const CallerScope inner(listening(two));
            printDiagnostics(u"inner"_s);
        }
        printDiagnostics(u"outer again"_s);
    }
    printDiagnostics(u"after"_s);
    EXPECT_EQ(one, QStringList({u"outer"_s, u"outer again"_s}));
    EXPECT_EQ(two, QStringList(u"inner"_s));
}

TEST_F(CallerTest, is_still_the_one_for_whom_a_later_turn_works) {
    ScheduledTask once;
    ScheduledTask often;
    {
        const CallerScope scope(listening(one));
        scheduler.async([this] {
            printDiagnostics(u"turn"_s);
            scheduler.async([] { printDiagnostics(u"turn after the turn"_s); });
        });
        once = scheduler.after(1, [] { printDiagnostics(u"once"_s); });
        often = scheduler.every(2, [] { printDiagnostics(u"often"_s); });
    }
    scheduler.async([] { printDiagnostics(u"of nobody"_s); });
    real.advance(4);
    EXPECT_EQ(one, QStringList({u"turn"_s, u"turn after the turn"_s, u"once"_s, u"often"_s, u"often"_s}));
    EXPECT_EQ(CallerScope::current(), nullptr);
}

TEST_F(CallerTest, is_still_the_one_for_whom_the_answer_of_a_site_is_worked_on) {
    FakeHttpClient network;
    CallerKeepingHttpClient http(network);
    {
        const CallerScope scope(listening(one));
        HttpRequest request;
        request.url = u"https://a.example"_s;
        http.get(request, [](const auto&) { printDiagnostics(u"answered"_s); });
    }
    network.deliverAll();
    EXPECT_EQ(one, QStringList(u"answered"_s));
}

TEST_F(CallerTest, belongs_to_one_thread) {
    const CallerScope scope(listening(one));
    std::thread([] { printDiagnostics(u"elsewhere"_s); }).join();
    EXPECT_TRUE(one.isEmpty());
}

}  // namespace wrapio
