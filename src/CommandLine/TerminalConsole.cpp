#include "CommandLine/TerminalConsole.h"

#include <QDir>

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

void write(int file, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const char* next = bytes.constData();
    const char* const end = next + bytes.size();
    while (next < end) {
        const ssize_t count = ::write(file, next, static_cast<std::size_t>(end - next));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        next += count;
    }
}

}  // namespace

TerminalConsole::TerminalConsole()
    : m_showsProgress(isatty(STDERR_FILENO) == 1) {}

TerminalConsole::~TerminalConsole() {
    clearProgress();
}

void TerminalConsole::print(const QString& line) {
    clearProgress();
    write(STDOUT_FILENO, line + u'\n');
}

void TerminalConsole::note(const QString& line) {
    clearProgress();
    write(STDERR_FILENO, line + u'\n');
}

void TerminalConsole::progress(const QString& line) {
    if (!m_showsProgress)
        return;
    clearProgress();
    write(STDERR_FILENO, line);
    m_progressOnScreen = true;
}

void TerminalConsole::clearProgress() {
    if (m_progressOnScreen)
        write(STDERR_FILENO, u"\r\x1b[K"_s);
    m_progressOnScreen = false;
}

void TerminalConsole::confirm(const QString& question, std::function<void(bool)> answered) {
    answered(asksForYes(question));
}

bool TerminalConsole::asksForYes(const QString& question) {
    if (isatty(STDIN_FILENO) != 1)
        return false;
    clearProgress();
    write(STDERR_FILENO, question + u" [y/N] "_s);
    std::array<char, 64> answer{};
    if (!std::fgets(answer.data(), static_cast<int>(answer.size()), stdin))
        return false;
    const QString text = QString::fromUtf8(answer.data()).trimmed().toLower();
    return text == u"y"_s || text == u"yes"_s;
}

QString TerminalConsole::resolved(const QString& path) const {
    return QDir::cleanPath(QDir::current().absoluteFilePath(path));
}

}  // namespace wrapio
