#include "ViewModels/AppListModel.h"

#include "Fakes/PrintQt.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// Rows of a catalogue that a test changes, and a list that shows them, under the eyes of Qt's own model tester.
class AppListModelTest : public testing::Test {
protected:
    AppListModelTest() {
        for (const QString& name : {u"A"_s, u"B"_s, u"C"_s, u"D"_s}) {
            AppConfiguration config;
            config.appName = name;
            config.configuredURL = WebAddress::parse(u"https://"_s + name.toLower() + u".example.com/"_s);
            records.push_back(config);
        }
        show();
        QObject::connect(&model, &QAbstractItemModel::rowsMoved,
                         [this](const QModelIndex&, int first, int, const QModelIndex&, int to) {
                             log << u"move %1 before %2"_s.arg(first).arg(to);
                         });
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, [this](const QModelIndex&, int first, int last) {
            log << u"insert %1-%2"_s.arg(first).arg(last);
        });
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, [this](const QModelIndex&, int first, int last) {
            log << u"remove %1-%2"_s.arg(first).arg(last);
        });
        QObject::connect(&model, &QAbstractItemModel::dataChanged,
                         [this](const QModelIndex& first, const QModelIndex& last) {
                             log << u"change %1-%2"_s.arg(first.row()).arg(last.row());
                         });
        QObject::connect(&model, &QAbstractItemModel::modelReset, [this] { log << u"reset"_s; });
        QObject::connect(&model, &AppListModel::countChanged, [this] { log << u"count"_s; });
    }

    void show(const QString& search = QString()) {
        rows.rebuild(records, running);
        AppRowList shown;
        for (const std::size_t position : rows.matching(search))
            shown.push_back(rows.all()[position]);
        model.show(shown);
    }

    [[nodiscard]] QVariant at(int row, AppListModel::Role role) const { return model.data(model.index(row), role); }

    [[nodiscard]] QString shownNames() const {
        QString names;
        for (int row = 0; row < model.rowCount(); ++row)
            names += at(row, AppListModel::DisplayNameRole).toString();
        return names;
    }

    std::vector<AppConfiguration> records;
    std::set<QUuid> running;
    std::map<QUuid, quint64> revisions;
    std::set<QUuid> withoutIcon;
    [[nodiscard]] AppRows::Sources rowSources() {
        return {.isOutdated = [](const AppConfiguration& config) { return config.runnerVersion == u"1.0"_s; },
                .iconRevision = [this](const QUuid& id) { return revisions[id]; },
                .hasIcon = [this](const QUuid& id) { return !withoutIcon.contains(id); }};
    }

    AppRows rows{rowSources()};
    AppListModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QStringList log;
};

}  // namespace

TEST_F(AppListModelTest, gives_each_row_its_values_under_the_names_of_its_roles) {
    running.insert(records[0].id);
    records[0].runnerVersion = u"1.0"_s;
    revisions[records[0].id] = 3;
    show();
    EXPECT_EQ(at(0, AppListModel::IdRole).toString(), canonicalText(records[0].id));
    EXPECT_EQ(at(0, AppListModel::DisplayNameRole).toString(), u"A"_s);
    EXPECT_EQ(model.data(model.index(0), Qt::DisplayRole).toString(), u"A"_s);
    EXPECT_EQ(at(0, AppListModel::HostRole).toString(), u"a.example.com"_s);
    EXPECT_TRUE(at(0, AppListModel::IsRunningRole).toBool());
    EXPECT_FALSE(at(1, AppListModel::IsRunningRole).toBool());
    EXPECT_TRUE(at(0, AppListModel::IsOutdatedRole).toBool());
    EXPECT_FALSE(at(1, AppListModel::IsOutdatedRole).toBool());
    EXPECT_EQ(at(0, AppListModel::IconUrlRole).toString(),
              u"image://appicon/"_s + canonicalText(records[0].id) + u"?3"_s);
    EXPECT_EQ(at(0, AppListModel::BundleHintRole).toString(), QString());
    const QList<QByteArray> names = {"appId",      "displayName", "host",      "isRunning",
                                     "isOutdated", "iconUrl",     "bundleHint"};
    for (const QByteArray& name : names)
        EXPECT_TRUE(model.roleNames().values().contains(name)) << name.constData();
}

TEST_F(AppListModelTest, names_no_icon_where_none_is_saved_until_one_is) {
    withoutIcon.insert(records[0].id);
    rows = AppRows(rowSources());
    show();
    EXPECT_EQ(at(0, AppListModel::IconUrlRole).toString(), QString());
    EXPECT_NE(at(1, AppListModel::IconUrlRole).toString(), QString());
    withoutIcon.clear();
    revisions[records[0].id] = 1;
    show();
    EXPECT_EQ(at(0, AppListModel::IconUrlRole).toString(),
              u"image://appicon/"_s + canonicalText(records[0].id) + u"?1"_s);
    log.clear();
}

TEST_F(AppListModelTest, has_nothing_to_say_about_rows_and_roles_that_do_not_exist) {
    EXPECT_FALSE(model.data(model.index(9), AppListModel::IdRole).isValid());
    EXPECT_FALSE(model.data(model.index(0), Qt::DecorationRole).isValid());
    EXPECT_FALSE(model.data(model.index(0), AppListModel::BundleHintRole + 1).isValid());
    EXPECT_EQ(model.rowCount(model.index(0)), 0);
}

TEST_F(AppListModelTest, tells_a_reorder_as_one_move_and_never_as_a_reset) {
    std::rotate(records.begin(), records.begin() + 1, records.end());
    show();
    EXPECT_EQ(shownNames(), u"BCDA"_s);
    EXPECT_EQ(log, QStringList{u"move 0 before 4"_s});
    log.clear();
    std::rotate(records.begin(), records.end() - 1, records.end());
    show();
    EXPECT_EQ(shownNames(), u"ABCD"_s);
    EXPECT_EQ(log, QStringList{u"move 3 before 0"_s});
}

TEST_F(AppListModelTest, tells_what_a_search_takes_out_and_brings_back) {
    show(u"b"_s);
    EXPECT_EQ(shownNames(), u"B"_s);
    EXPECT_EQ(log, (QStringList{u"remove 2-3"_s, u"remove 0-0"_s, u"count"_s}));
    log.clear();
    show();
    EXPECT_EQ(shownNames(), u"ABCD"_s);
    EXPECT_EQ(log, (QStringList{u"insert 0-0"_s, u"insert 2-3"_s, u"count"_s}));
    EXPECT_EQ(model.count(), 4);
}

TEST_F(AppListModelTest, tells_of_rows_that_look_different_only) {
    records[2].customCSS = u"body {}"_s;
    show();
    EXPECT_EQ(log, QStringList());
    records[2].appName = u"X"_s;
    revisions[records[0].id] = 1;
    running.insert(records[3].id);
    show();
    EXPECT_EQ(log, (QStringList{u"change 0-0"_s, u"change 2-2"_s, u"change 3-3"_s}));
    EXPECT_EQ(at(0, AppListModel::IconUrlRole).toString().right(2), u"?1"_s);
}

TEST_F(AppListModelTest, searches_a_changed_name_and_address) {
    records[0].appName = u"Zebra"_s;
    show(u"zebra"_s);
    EXPECT_EQ(shownNames(), u"Zebra"_s);
    records[0].configuredURL = WebAddress::parse(u"https://quagga.example.com/"_s);
    show(u"quagga"_s);
    EXPECT_EQ(shownNames(), u"Zebra"_s);
}

TEST_F(AppListModelTest, hints_at_apps_that_share_a_bundle_and_at_names_that_have_several_places) {
    records[1].appName = u"A"_s;
    records[2].appName = u"v1.0"_s;
    show();
    EXPECT_TRUE(at(0, AppListModel::BundleHintRole).toString().contains(u"“A”"_s));
    EXPECT_TRUE(at(1, AppListModel::BundleHintRole).toString().contains(u"“A”"_s));
    EXPECT_EQ(at(2, AppListModel::BundleHintRole).toString(), unsafeNameHint());
    EXPECT_EQ(at(3, AppListModel::BundleHintRole).toString(), QString());
}

TEST_F(AppListModelTest, shows_records_of_one_id_as_rows_of_their_own) {
    records[1].id = records[0].id;
    show();
    EXPECT_EQ(shownNames(), u"ABCD"_s);
    records.erase(records.begin());
    show();
    EXPECT_EQ(shownNames(), u"BCD"_s);
}

TEST_F(AppListModelTest, shows_a_record_without_an_address) {
    records = {AppConfiguration()};
    show();
    EXPECT_EQ(shownNames(), u"Wrapio"_s);
    EXPECT_EQ(at(0, AppListModel::HostRole).toString(), QString());
}

}  // namespace wrapio
