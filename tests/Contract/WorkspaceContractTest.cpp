// What every workspace does, whether its processes are real or made up.

#include "Fakes/FakeWorkspace.h"
#include "Fakes/PrintErrors.h"
#include "Fakes/PrintQt.h"
#include "Platform/Linux/LinuxWorkspace.h"
#include "Platform/Linux/QtScheduler.h"
#include "Platform/System/RunningBundles.h"
#include "Platform/System/TestBundle.h"
#include "Platform/System/Waiting.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

struct MadeUpDesktop {
    [[nodiscard]] static QString place(const QString& name) { return u"/apps/"_s + name; }
    static void install(const QString&) {}
    void breakBundle(const QString& bundle) { workspace.launchFailure = LaunchError{bundle, u"damaged"_s}; }
    void registerApp(const QString& identifier, const QString& bundle) { workspace.registered[identifier] = bundle; }
    FakeWorkspace workspace;
};

struct RealDesktop {
    [[nodiscard]] QString place(const QString& name) const { return folder.path() + u'/' + name; }
    static void install(const QString& bundle) { makeBundle(bundle); }
    static void breakBundle(const QString& bundle) {
        ASSERT_TRUE(QFile::remove(bundle + u"/Contents/Linux/WrapioRunner"_s));
    }
    void registerApp(const QString& identifier, const QString& bundle) { registered[identifier] = bundle; }

    QTemporaryDir folder;
    RunningBundles running{folder.path()};
    std::map<QString, QString> registered;
    QtScheduler scheduler;
    LinuxWorkspace workspace{{folder.path(), std::nullopt, std::nullopt, QString(), QString()},
                             scheduler,
                             [this](const QString& identifier) -> std::optional<QString> {
                                 const auto found = registered.find(identifier);
                                 return found == registered.end() ? std::nullopt : std::optional(found->second);
                             }};
};

template <typename Desktop>
struct WorkspaceContract : testing::Test {
    std::optional<LaunchError> open(const QString& bundle) {
        std::optional<std::optional<LaunchError>> result;
        workspace.openApplication(bundle, {true}, [&result](std::optional<LaunchError> failure) { result = failure; });
        EXPECT_TRUE(waitUntil([&result] { return result.has_value(); }));
        return result.value_or(std::nullopt);
    }
    /// The running ones among those of this test.
    [[nodiscard]] std::vector<RunningApplication> running() const {
        auto all = workspace.runningApplications();
        const QString place = desktop.place(QString());
        std::erase_if(all, [&place](const auto& one) { return !one.bundleURL || !one.bundleURL->startsWith(place); });
        return all;
    }
    [[nodiscard]] std::vector<QString> runningBundles() const {
        std::vector<QString> bundles;
        for (const RunningApplication& one : running())
            bundles.push_back(*one.bundleURL);
        return bundles;
    }

    Desktop desktop;
    Workspace& workspace = desktop.workspace;
    QString mail = desktop.place(u"Mail.app"_s);
    QString news = desktop.place(u"News.app"_s);
};

using Desktops = testing::Types<MadeUpDesktop, RealDesktop>;
TYPED_TEST_SUITE(WorkspaceContract, Desktops);

TYPED_TEST(WorkspaceContract, OpenedApplicationsRunAndTheOldestComesFirst) {
    this->desktop.install(this->mail);
    this->desktop.install(this->news);
    EXPECT_THAT(this->runningBundles(), ElementsAre());
    EXPECT_EQ(this->open(this->news), std::nullopt);
    EXPECT_EQ(this->open(this->mail), std::nullopt);
    EXPECT_THAT(this->runningBundles(), ElementsAre(this->news, this->mail));
    EXPECT_NE(this->running()[0].processIdentifier, this->running()[1].processIdentifier);
}

TYPED_TEST(WorkspaceContract, AnApplicationThatCannotBeStartedIsAFailureInWords) {
    this->desktop.install(this->mail);
    this->desktop.breakBundle(this->mail);
    const auto failure = this->open(this->mail);
    ASSERT_TRUE(failure);
    EXPECT_TRUE(failure->description().contains(u"Mail.app"_s));
    EXPECT_THAT(this->runningBundles(), ElementsAre());
}

TYPED_TEST(WorkspaceContract, AnApplicationThatIsAskedToEndEnds) {
    this->desktop.install(this->mail);
    this->desktop.install(this->news);
    EXPECT_EQ(this->open(this->mail), std::nullopt);
    EXPECT_EQ(this->open(this->news), std::nullopt);
    EXPECT_TRUE(this->workspace.terminate(this->running().front()));
    EXPECT_TRUE(waitUntil([this] { return this->runningBundles() == std::vector{this->news}; }));
}

TYPED_TEST(WorkspaceContract, AnApplicationCanBeEndedByForce) {
    this->desktop.install(this->mail);
    EXPECT_EQ(this->open(this->mail), std::nullopt);
    EXPECT_TRUE(this->workspace.forceTerminate(this->running().front()));
    EXPECT_TRUE(waitUntil([this] { return this->running().empty(); }));
}

TYPED_TEST(WorkspaceContract, OnlyRegisteredApplicationsAreFoundByIdentifier) {
    this->desktop.registerApp(u"com.example.mail"_s, this->mail);
    EXPECT_EQ(this->workspace.urlForApplication(u"com.example.mail"_s), this->mail);
    EXPECT_EQ(this->workspace.urlForApplication(u"com.example.news"_s), std::nullopt);
}

}  // namespace
}  // namespace wrapio
