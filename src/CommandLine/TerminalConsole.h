// The standard streams of this process.
#pragma once

#include "CommandLine/Console.h"

namespace wrapio {

class TerminalConsole final : public Console {
public:
    TerminalConsole();
    ~TerminalConsole() override;

    void print(const QString& line) override;
    void note(const QString& line) override;
    void progress(const QString& line) override;
    void confirm(const QString& question, std::function<void(bool)> answered) override;
    QString resolved(const QString& path) const override;

private:
    void clearProgress();
    [[nodiscard]] bool asksForYes(const QString& question);
    bool m_showsProgress = false;
    bool m_progressOnScreen = false;
};

}  // namespace wrapio
