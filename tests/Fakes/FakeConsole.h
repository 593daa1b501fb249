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
    void confirm(const QString& question, std::function<void(bool)> answered) override {
        questions << question;
        if (beforeTheAnswer)
            beforeTheAnswer();
        answered(answer);
    }
    QString resolved(const QString& path) const override { return QDir(workingDirectory).absoluteFilePath(path); }

    QStringList printed;
    QStringList notes;
    QStringList progressed;
    QStringList questions;
    bool answer = false;
    std::function<void()> beforeTheAnswer;  ///< what happens while somebody thinks about a question
    QString workingDirectory;
};

}  // namespace wrapio
