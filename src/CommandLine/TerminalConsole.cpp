#include "CommandLine/TerminalConsole.h"

#include <QDir>

#include <array>
#include <cstdio>
#include <unistd.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

void write(std::FILE* stream, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
}

}  // namespace

TerminalConsole::TerminalConsole() : m_showsProgress(isatty(STDERR_FILENO) == 1) {}

TerminalConsole::~TerminalConsole() {
    clearProgress();
}

void TerminalConsole::print(const QString& line) {
    clearProgress();
    write(stdout, line + u'\n');
}

void TerminalConsole::note(const QString& line) {
    clearProgress();
    write(stderr, line + u'\n');
}

void TerminalConsole::progress(const QString& line) {
    if (!m_showsProgress)
        return;
    clearProgress();
    write(stderr, line);
    m_progressOnScreen = true;
}

void TerminalConsole::clearProgress() {
    if (m_progressOnScreen)
        write(stderr, u"\r\x1b[K"_s);
    m_progressOnScreen = false;
}

bool TerminalConsole::confirm(const QString& question) {
    if (isatty(STDIN_FILENO) != 1)
        return false;
    clearProgress();
    write(stderr, question + u" [y/N] "_s);
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
