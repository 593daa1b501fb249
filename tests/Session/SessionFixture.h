// Commands that travel over a channel inside the test.
#pragma once

#include "Fakes/CommandFixture.h"
#include "Fakes/FakeLocalServer.h"
#include "Platform/CallerKeeping.h"
#include "Platform/Diagnostics.h"
#include "Session/CommandClient.h"

namespace wrapio {

/// A process that has handed a command over.
struct CallingProcess {
    explicit CallingProcess(std::unique_ptr<LocalChannel> channel)
        : client(std::move(channel), console) {}

    FakeConsole console;
    std::optional<ExitStatus> status;
    CommandClient client;
};

class SessionFixture : public CommandFixture {
protected:
    SessionFixture() { setDiagnosticsDestination(DiagnosticsDestination::nowhere); }
    ~SessionFixture() override { setDiagnosticsDestination(DiagnosticsDestination::standardOutput); }

    [[nodiscard]] CommandServices commandServices() {
        return {*this, keepingFavicons,  versions, workspace,
                files, resources, keeping,  [this]() -> CollectionExportService& { return exchange; }};
    }

    /// Hands a command over, without waiting for what comes of it.
    std::unique_ptr<CallingProcess> call(const QStringList& arguments, CommandMessage message = {}) {
        auto channel = server.call();
        if (!channel)
            return nullptr;
        auto process = std::make_unique<CallingProcess>(std::move(channel));
        message.arguments = arguments;
        if (message.folder.isEmpty())
            message.folder = home.path();
        process->client.run(message, [&status = process->status](ExitStatus ended) {
            EXPECT_FALSE(status) << "a command ended twice";
            status = ended;
        });
        return process;
    }

    /// Lets time pass until the command has ended.
    ExitStatus finish(const std::unique_ptr<CallingProcess>& process) {
        for (int turn = 0; turn < 1000 && !process->status; ++turn) {
            http.deliverAll();
            scheduler.advance(0.05);
        }
        EXPECT_TRUE(process->status) << "the command never ended";
        return process->status.value_or(ExitStatus::failed);
    }

    CallerKeepingScheduler keeping{scheduler};
    CallerKeepingHttpClient keepingHttp{http};
    FaviconService keepingFavicons{keepingHttp, files, directories};
    FakeLocalServer server{scheduler};
};

}  // namespace wrapio
