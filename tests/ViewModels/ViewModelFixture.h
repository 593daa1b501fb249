// Everything that the view models work with, on fakes.
#pragma once

#include "Fakes/DiagnosticsCapture.h"
#include "Fakes/FakeCollectionExchange.h"
#include "Fakes/FakeFileDialogs.h"
#include "Fakes/LifecycleFixture.h"
#include "Fakes/TestImages.h"
#include "ViewModels/ViewModelServices.h"

#include <QFile>

namespace wrapio {

class ViewModelFixture : public LifecycleFixture {
public:
    /// A record of that name with an address of its own, built from a template of `version`.
    static AppConfiguration app(const QString& name, const QString& address = QStringLiteral("https://example.com/"),
                                const std::optional<QString>& version = QStringLiteral("1.4.0")) {
        AppConfiguration config;
        config.appName = name;
        config.configuredURL = WebAddress::parse(address);
        config.runnerVersion = version;
        return config;
    }

protected:
    ViewModelFixture() {
        tools.answer(QStringLiteral("/usr/bin/iconutil"), [](const QStringList& arguments) {
            QFile file(arguments.last());
            const bool isWritten = file.open(QIODevice::WriteOnly) && file.write("icns") > 0;
            return ToolResult{.status = isWritten ? 0 : 1, .standardOutput = {}, .standardError = {}};
        });
    }

    /// Everything, over a catalogue of `records`.
    ViewModelServices makeServices(const std::vector<AppConfiguration>& records = {}) {
        if (!records.empty())
            storeList(records);
        makeLifecycle();
        return {.configManager = *store,
                .appLifecycleManager = *lifecycle,
                .faviconService = favicons,
                .versionManager = versions,
                .launchServices = launchServices,
                .collectionExchange = exchange,
                .fileDialogs = dialogs,
                .files = files,
                .workspace = workspace,
                .resources = resources,
                .scheduler = scheduler,
                .directories = directories};
    }

    /// Makes the bundles of all records, as if they had been generated before.
    void makeBundles() const {
        for (const AppConfiguration& config : store->configurations())
            makeBundle(config.displayName() + QStringLiteral(".app"));
    }

    /// Makes every copy of a template fail.
    void failGeneration(const QString& bundleName = QStringLiteral(".app")) {
        files.fault = [bundleName](const QString& operation, const QString& path) -> std::optional<int> {
            const bool fails = operation == QStringLiteral("copyTree") && path.endsWith(bundleName);
            return fails ? std::optional(ENOSPC) : std::nullopt;
        };
    }

    [[nodiscard]] bool hasBundle(const QString& name) const { return QFile::exists(bundle(name)); }

    /// Writes a file and answers its path.
    [[nodiscard]] QString writeFile(const QString& name, const QByteArray& bytes) const {
        const QString path = home.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    [[nodiscard]] QStringList names() const { return namesOf(store->configurations()); }

    FakeCollectionExchange exchange;
    FakeFileDialogs dialogs;
};

}  // namespace wrapio
