// A console that remembers what was written.
#pragma once

#include "CommandLine/Console.h"

#include <QDir>
#include <QStringList>

namespace wrapio {

class FakeConsole final : public Console {
public:
    void print(const QString& line) override { printed << line; }
    void note(const QString& line) override { notes << line; }
    void progress(const QString& line) override { progressed << line; }
    bool confirm(const QString& question) override {
        questions << question;
        return answer;
    }
    QString resolved(const QString& path) const override { return QDir(workingDirectory).absoluteFilePath(path); }

    QStringList printed;
    QStringList notes;
    QStringList progressed;
    QStringList questions;
    bool answer = false;
    QString workingDirectory;
};

}  // namespace wrapio
