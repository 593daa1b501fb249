// wrapio-offline: shows what the dashboard would show over a recorded catalogue, without touching anything of the
// user's.
#include "Fakes/ManualScheduler.h"
#include "Offline/DashboardScreen.h"
#include "Offline/OfflineFixture.h"
#include "Platform/Diagnostics.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QHash>

#include <cstdio>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr int usageError = 2;

void print(const QString& line) {
    std::puts(line.toUtf8().constData());
}

QString lineOf(const AppListModel& apps, int row) {
    const auto at = [&apps, row](AppListModel::Role role) { return apps.data(apps.index(row), role); };
    QStringList words = {at(AppListModel::DisplayNameRole).toString(), at(AppListModel::HostRole).toString()};
    if (at(AppListModel::IsRunningRole).toBool())
        words << u"running"_s;
    if (at(AppListModel::IsOutdatedRole).toBool())
        words << u"outdated"_s;
    if (const QString hint = at(AppListModel::BundleHintRole).toString(); !hint.isEmpty())
        words << hint;
    return words.join(u'\t');
}

QString fixtureOf(const QString& count) {
    const QHash<QString, QString> fixtures = {
        {u"0"_s, u"empty"_s}, {u"1"_s, u"one"_s}, {u"12"_s, u"dozen"_s}, {u"1000"_s, u"thousand"_s}};
    return fixtures.value(count, count + u" apps"_s);
}

int show(const QString& name, const QString& search) {
    ManualScheduler scheduler;
    OfflineFixture fixture(name, scheduler);
    DashboardViewModel& dashboard = fixture.dashboard();
    scheduler.advance(1.0);
    dashboard.setSearchText(search);
    print(u"%1 standalone apps configured, %2 updates available, %3 shown"_s.arg(dashboard.appCount())
              .arg(dashboard.outdatedCount())
              .arg(dashboard.appList()->count()));
    for (int row = 0; row < dashboard.appList()->count(); ++row)
        print(lineOf(*dashboard.appList(), row));
    return 0;
}

}  // namespace

int run(const QCoreApplication& application) {
    setDiagnosticsDestination(DiagnosticsDestination::standardError);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Shows what the dashboard would show over a recorded catalogue."_s);
    parser.addHelpOption();
    parser.addPositionalArgument(u"fixture"_s, u"One of: "_s + OfflineFixture::names().join(u", "_s), u"[fixture]"_s);
    const QCommandLineOption search({u"s"_s, u"search"_s}, u"Filter by this text."_s, u"text"_s);
    const QCommandLineOption dashboard(u"dashboard"_s, u"Open the dashboard's window."_s);
    const QCommandLineOption count(u"count"_s, u"The catalogue of 0, 1, 12 or 1000 apps."_s, u"apps"_s);
    parser.addOptions({search, dashboard, count});
    parser.process(application);
    const QString name =
        parser.isSet(count) ? fixtureOf(parser.value(count)) : parser.positionalArguments().value(0, u"dozen"_s);
    if (!OfflineFixture::names().contains(name)) {
        std::fprintf(stderr, "wrapio-offline: no fixture is called %s; there are: %s\n", qUtf8Printable(name),
                     qUtf8Printable(OfflineFixture::names().join(u", "_s)));
        return usageError;
    }
    return parser.isSet(dashboard) ? showDashboard(name) : show(name, parser.value(search));
}

}  // namespace wrapio

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    return wrapio::run(application);
}
