// A home folder with an apps directory and fakes of everything that the services use.
#pragma once

#include "Fakes/DiagnosticsCapture.h"
#include "Fakes/FakeWorkspace.h"
#include "Fakes/FaultyFileSystem.h"
#include "Fakes/PrintQt.h"
#include "Fakes/RecordingToolRunner.h"
#include "Fakes/TemporaryFileSystem.h"
#include "Platform/Directories.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace wrapio {

class ServiceFixture : public testing::Test {
protected:
    TemporaryFileSystem temporary;
    FaultyFileSystem files{temporary};
    RecordingToolRunner tools;
    FakeWorkspace workspace;
    Directories directories{
        .home = temporary.root(),
        .applicationSupport = temporary.path(QStringLiteral("support")),
        .caches = temporary.path(QStringLiteral("caches")),
        .configuration = temporary.path(QStringLiteral("config")),
        .temporary = temporary.path(QStringLiteral("tmp")),
    };

    /// Makes one operation fail on every path that ends in `ending`.
    void failWhere(const QString& operation, const QString& ending, int code = EACCES) {
        files.fault = [=](const QString& tried, const QString& path) {
            return tried == operation && path.endsWith(ending) ? std::optional(code) : std::nullopt;
        };
    }
};

}  // namespace wrapio
