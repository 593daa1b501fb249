// A catalogue whose collection can be exported and imported.
#pragma once

#include "Fakes/DiagnosticsCapture.h"
#include "Fakes/FakeFileDialogs.h"
#include "Fakes/LifecycleFixture.h"
#include "Fakes/TestImages.h"
#include "Services/CollectionExportService.h"

#include <QDirIterator>

#include <map>

namespace wrapio {

inline const QString dittoPath = QStringLiteral("/usr/bin/ditto");

class ExchangeFixture : public LifecycleFixture {
protected:
    using Entries = std::map<QString, QByteArray>;

    ExchangeFixture() {
        QDir().mkpath(directories.temporary);
        tools.answer(QStringLiteral("/usr/bin/iconutil"), [](const QStringList& arguments) {
            writeFile(arguments.last(), "icns");
            return ToolResult{};
        });
        service = std::make_unique<CollectionExportService>(tools, files, scheduler, directories);
    }

    static void writeFile(const QString& path, const QByteArray& bytes) {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
        file.write(bytes);
    }
    static QByteArray readFile(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }
    /// The files below `folder` by relative path; folders end in a slash.
    static Entries contentsOf(const QString& folder) {
        Entries entries;
        QDirIterator entry(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (entry.hasNext()) {
            entry.next();
            const QString name = QDir(folder).relativeFilePath(entry.filePath());
            if (entry.fileInfo().isDir())
                entries[name + u'/'];
            else
                entries[name] = readFile(entry.filePath());
        }
        return entries;
    }

    /// What is in the temporary directory.
    [[nodiscard]] QStringList leftovers() const {
        return QDir(directories.temporary).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    [[nodiscard]] QString place(const QString& name) const { return home.filePath(name); }

    CollectionExportService::Destination destination() { return {*store, favicons, *lifecycle}; }

    FakeFileDialogs dialogs;
    std::unique_ptr<CollectionExportService> service;
};

}  // namespace wrapio
