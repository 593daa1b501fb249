// A catalogue on fakes, in a temporary home.
#pragma once

#include "Fakes/FakeResources.h"
#include "Fakes/FakeUserDefaults.h"
#include "Fakes/FakeWorkspace.h"
#include "Fakes/FaultyFileSystem.h"
#include "Fakes/ManualScheduler.h"
#include "Fakes/PrintQt.h"
#include "Fakes/RecordingToolRunner.h"
#include "Models/ConfigurationCoding.h"
#include "Models/ConfigurationManager.h"
#include "Platform/Linux/LinuxFileSystem.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace wrapio {

inline const QString lsregister = QStringLiteral(
    "/System/Library/Frameworks/CoreServices.framework/Frameworks/LaunchServices.framework/Support/lsregister");

/// Everything that the store stands on; a test calls makeStore() once the defaults are as it wants them.
class StoreFixture : public testing::Test {
protected:
    StoreFixture()
        : directories{home.path(), home.filePath(QStringLiteral("data")), home.filePath(QStringLiteral("cache")),
                      home.filePath(QStringLiteral("config")), home.filePath(QStringLiteral("tmp"))} {
        QDir().mkpath(directories.generatedApps());
    }

    ConfigurationManager& makeStore() {
        store = std::make_unique<ConfigurationManager>(defaults, files, launchServices, previews, scheduler, directories);
        return *store;
    }

    /// A record with that name and an address.
    static AppConfiguration record(const QString& name) {
        AppConfiguration configuration;
        configuration.appName = name;
        configuration.configuredURL = WebAddress::parse(QStringLiteral("https://www.example.com/"));
        return configuration;
    }

    void storeList(const std::vector<AppConfiguration>& records) {
        defaults.values[QStringLiteral("app_configurations")] = *encodeConfigurations(records);
    }

    /// What the defaults hold now.
    [[nodiscard]] std::vector<AppConfiguration> stored() const {
        return decodeConfigurations(defaults.values.at(QStringLiteral("app_configurations"))).value();
    }

    QString makeBundle(const QString& fileName) const {
        const QString path = directories.generatedApps() + u'/' + fileName;
        QDir().mkpath(path + QStringLiteral("/Contents"));
        return path;
    }

    static QStringList namesOf(const std::vector<AppConfiguration>& records) {
        QStringList names;
        for (const AppConfiguration& r : records)
            names << r.displayName();
        return names;
    }

    QTemporaryDir home;
    Directories directories;
    LinuxFileSystem realFiles;
    FaultyFileSystem files{realFiles};
    RecordingToolRunner tools;
    FakeWorkspace workspace;
    FakeUserDefaults defaults;
    ManualScheduler scheduler;
    LaunchServicesManager launchServices{tools, files, workspace, directories};
    PreviewCacheManager previews{files, directories};
    std::unique_ptr<ConfigurationManager> store;
};

}  // namespace wrapio
