// Folders, bundles and real programs for the tests of the tools.
#pragma once

#include "Platform/ToolRunner.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <map>

namespace wrapio {

/// A folder of the test's own, gone afterwards.
class ScratchFolder {
public:
    ScratchFolder() { EXPECT_TRUE(m_folder.isValid()); }
    [[nodiscard]] QString path(const QString& below) const { return m_folder.filePath(below); }
    [[nodiscard]] QString path() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
};

/// Writes a file and the folders above it.
void writeFile(const QString& path, const QByteArray& bytes);
void writeExecutable(const QString& path, const QByteArray& bytes);
[[nodiscard]] QByteArray readFile(const QString& path);
/// Contents of all files below a folder, by relative path; folders appear with a slash at the end.
[[nodiscard]] std::map<QString, QByteArray> contentsOf(const QString& folder);

/// PNG bytes of a square picture in one colour.
[[nodiscard]] QByteArray squarePng(int edge);
/// The ten pictures of an icon set.
void writeIconset(const QString& folder);

struct TestBundle {
    QString path;
    QString identifier = QStringLiteral("com.wrapio.generated.mail-0b7c57e2");
    QString name = QStringLiteral("Mail");
    QString scheme = QStringLiteral("wrapio-0b7c57e2-5d0f-4c51-9a57-3e1f6b1d2a40");
    QByteArray executable = "#!/bin/sh\n";
    bool withIcon = false;

    /// Writes the bundle to the disk.
    void write() const;
};

/// Runs a real program. The test fails when it cannot be started.
ToolResult runProgram(const QString& path, const QStringList& arguments);
/// Runs a real program and expects that it ends well.
QByteArray outputOf(const QString& path, const QStringList& arguments);

}  // namespace wrapio
