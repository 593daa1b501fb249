// A lifecycle manager on fakes, with a small template bundle.
#pragma once

#include "Fakes/FakeHttpClient.h"
#include "Fakes/StoreFixture.h"
#include "Services/AppLifecycleManager.h"

#include <QFile>

namespace wrapio {

class LifecycleFixture : public StoreFixture {
protected:
    LifecycleFixture() {
        makeTemplate(QStringLiteral("1.4.0"));
        tools.answer(QStringLiteral("/usr/bin/iconutil"), [this](const QStringList& arguments) {
            EXPECT_TRUE(realFiles.write(arguments.last(), "icns"));
            return ToolResult{};
        });
    }

    /// Writes the runner template with that version.
    void makeTemplate(const QString& version) {
        const QString path = home.filePath(QStringLiteral("share/WrapioRunner.app"));
        QDir().mkpath(path + QStringLiteral("/Contents/Resources"));
        QFile plist(path + QStringLiteral("/Contents/Info.plist"));
        ASSERT_TRUE(plist.open(QIODevice::WriteOnly));
        plist.write(QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
                                   "<key>CFBundleShortVersionString</key><string>%1</string></dict></plist>")
                        .arg(version)
                        .toUtf8());
        resources.paths[QStringLiteral("WrapioRunner.app")] = path;
    }

    AppLifecycleManager& makeLifecycle() {
        if (!store)
            makeStore();
        lifecycle = std::make_unique<AppLifecycleManager>(*store, generator, versions, workspace, files, scheduler,
                                                          directories);
        return *lifecycle;
    }

    /// Where the lifecycle manager looks for that bundle.
    [[nodiscard]] QString bundle(const QString& fileName) const {
        return directories.generatedApps() + u'/' + fileName;
    }

    FakeHttpClient http;
    FakeResources resources;
    FaviconService favicons{http, files, directories};
    IconService icons{tools, files};
    VersionManager versions{resources, files};
    BundleGenerator generator{tools, files, resources, favicons, icons, launchServices, versions};
    std::unique_ptr<AppLifecycleManager> lifecycle;
};

}  // namespace wrapio
