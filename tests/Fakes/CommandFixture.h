// The command line on fakes.
#pragma once

#include "CommandLine/CommandRunner.h"
#include "Fakes/FakeConsole.h"
#include "Fakes/FakeScreenCapture.h"
#include "Fakes/FakeSystemHealth.h"
#include "Fakes/LifecycleFixture.h"
#include "Services/Doctor.h"

namespace wrapio {

class CommandFixture : public LifecycleFixture, protected CatalogueProvider {
protected:
    CommandFixture() { console.workingDirectory = home.path(); }

    tl::expected<Catalogue, CatalogueBusy> openForChanges() override {
        if (busy)
            return tl::unexpected(*busy);
        return openForReading();
    }

    Catalogue openForReading() override {
        if (!lifecycle)
            makeLifecycle();
        if (!doctor)
            doctor = std::make_unique<Doctor>(*store, *lifecycle, versions, files, workspace, launchServices, health,
                                              directories);
        return {*store, *lifecycle, *doctor};
    }

    /// Runs a command line to its end, letting time pass and the web answer; the exit status.
    std::function<bool(const QUuid&)> showEditor;

    ExitStatus run(const QStringList& arguments) {
        const auto command = parseCommand(arguments);
        EXPECT_TRUE(command) << (command ? "" : command.error().message.toStdString());
        CommandRunner runner({*this, favicons, versions, workspace, files, resources, scheduler, [this]() -> auto& { return exchange; },
                              [this] { return PictureServices{screen, previews}; }, showEditor});
        std::optional<ExitStatus> status;
        runner.run(*command, console, [&status](ExitStatus ended) {
            EXPECT_FALSE(status) << "a command ended twice";
            status = ended;
        });
        for (int turn = 0; turn < 1000 && !status; ++turn) {
            http.deliverAll();
            scheduler.advance(0.05);
        }
        EXPECT_TRUE(status) << "the command never ended";
        return status.value_or(ExitStatus::failed);
    }

    QString writeFile(const QString& name, const QByteArray& bytes) {
        QFile file(home.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return name;
    }

    CollectionExportService exchange{tools, files, scheduler, directories};
    FakeScreenCapture screen{scheduler};
    FakeConsole console;
    FakeSystemHealth health;
    std::optional<CatalogueBusy> busy;
    std::unique_ptr<Doctor> doctor;
};

}  // namespace wrapio
