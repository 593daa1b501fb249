#include "Platform/Linux/LinuxSystemHealth.h"

#include "Fakes/PrintQt.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <cerrno>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

BundleHealth bundles() {
    return {[](const QString& path) {
                return SealReport{Finding::damaged, u"changed: "_s + path};
            },
            [] {
                return std::vector<Registration>{{u"com.example.a"_s, u"/a.app"_s}};
            },
            [](const QString& identifier) -> FileResult<void> {
                return tl::unexpected(FileError{u"remove"_s, identifier, EACCES});
            }};
}

struct LinuxSystemHealthTest : testing::Test {
    void install(const QString& program, const QByteArray& script) const {
        QFile file(folder.path() + u'/' + program);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script);
        ASSERT_TRUE(file.setPermissions(QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    }
    [[nodiscard]] SurroundingsCheck check(const QString& name) const {
        for (const SurroundingsCheck& found : health.surroundings()) {
            if (found.name == name)
                return found;
        }
        ADD_FAILURE() << "no such check: " << name.toStdString();
        return {};
    }

    QTemporaryDir folder;
    LinuxSystemHealth health{bundles(), {{folder.path()}, {folder.path()}}};
};

TEST_F(LinuxSystemHealthTest, BundlesAndRegistrationsAreAnsweredByThoseWhoKnow) {
    EXPECT_EQ(health.verifySeal(u"/x.app"_s).detail, u"changed: /x.app"_s);
    EXPECT_EQ(health.registrations().front().identifier, u"com.example.a"_s);
    EXPECT_EQ(health.removeRegistration(u"com.example.a"_s).error().path, u"com.example.a"_s);
}

TEST_F(LinuxSystemHealthTest, EverythingThatIsMissingHasARemedy) {
    const auto checks = health.surroundings();
    std::vector<QString> names;
    for (const SurroundingsCheck& one : checks) {
        names.push_back(one.name);
        EXPECT_FALSE(one.usable) << one.name.toStdString();
        EXPECT_FALSE(one.detail.isEmpty()) << one.name.toStdString();
        EXPECT_FALSE(one.remedy.isEmpty()) << one.name.toStdString();
    }
    EXPECT_THAT(names, ElementsAre(u"Display"_s, u"Session bus"_s, u"Status items"_s, u"Page engine"_s,
                                   u"Page engine sandbox"_s, u"Page engine bus proxy"_s, u"Registration of apps"_s,
                                   u"Opening of addresses"_s));
    EXPECT_EQ(check(u"Page engine sandbox"_s).remedy, u"Install the package bubblewrap"_s);
    EXPECT_EQ(check(u"Opening of addresses"_s).detail, u"gio was not found"_s);
}

TEST_F(LinuxSystemHealthTest, ADisplayThatDoesNotAnswerIsNamed) {
    EXPECT_EQ(check(u"Display"_s).detail, u"Neither WAYLAND_DISPLAY nor DISPLAY is set"_s);
    qputenv("DISPLAY", ":987");
    EXPECT_EQ(check(u"Display"_s).detail, u":987 cannot be reached"_s);
    qputenv("WAYLAND_DISPLAY", "wayland-none");
    EXPECT_EQ(check(u"Display"_s).detail, u"wayland-none cannot be reached"_s);
    qunsetenv("DISPLAY");
    qunsetenv("WAYLAND_DISPLAY");
}

TEST_F(LinuxSystemHealthTest, ASandboxThatIsRefusedIsTold) {
    install(u"bwrap"_s, "echo 'No permissions to create new namespace' >&2; exit 1\n");
    const auto refused = check(u"Page engine sandbox"_s);
    EXPECT_FALSE(refused.usable);
    EXPECT_TRUE(refused.remedy.contains(u"user namespaces"_s));
    install(u"bwrap"_s, "test \"$1\" = --unshare-pid\n");
    EXPECT_TRUE(check(u"Page engine sandbox"_s).usable);
}

TEST_F(LinuxSystemHealthTest, WhatIsThereIsUsableAndSaysWhere) {
    for (const auto& program : {u"xdg-dbus-proxy"_s, u"update-desktop-database"_s, u"gio"_s})
        install(program, "exit 1\n");
    install(u"libwebkitgtk-6.0.so.4"_s, "");
    for (const auto& name :
         {u"Page engine"_s, u"Page engine bus proxy"_s, u"Registration of apps"_s, u"Opening of addresses"_s}) {
        const auto found = check(name);
        EXPECT_TRUE(found.usable) << name.toStdString();
        EXPECT_TRUE(found.detail.startsWith(folder.path())) << found.detail.toStdString();
        EXPECT_EQ(found.remedy, QString());
    }
}

TEST_F(LinuxSystemHealthTest, TheSystemsOwnPlacesHoldThePageEngine) {
    const LinuxSystemHealth system(bundles());
    for (const SurroundingsCheck& one : system.surroundings()) {
        if (one.name.startsWith(u"Page engine") || one.name.startsWith(u"Registration")) {
            EXPECT_TRUE(one.usable) << one.name.toStdString() << ": " << one.detail.toStdString();
        }
    }
}

}  // namespace
}  // namespace wrapio
