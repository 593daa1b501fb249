#include "Session/RemoteConsole.h"

#include <QDir>

#include <utility>

namespace wrapio {

namespace {

/// A long answer goes in parts, each of whole lines, so that no message grows beyond what a reader takes.
constexpr qsizetype partSize = 1024 * 1024;

}  // namespace

RemoteConsole::RemoteConsole(QString folder, Send send)
    : m_folder(std::move(folder))
    , m_send(std::move(send)) {}

void RemoteConsole::print(const QString& line) {
    qsizetype from = 0;
    while (line.size() - from > partSize) {
        const qsizetype end = line.indexOf(u'\n', from + partSize);
        if (end < 0)
            break;
        output(OutputMessage::Kind::print, line.mid(from, end - from));
        from = end + 1;
    }
    output(OutputMessage::Kind::print, line.mid(from));
}

void RemoteConsole::note(const QString& line) {
    output(OutputMessage::Kind::note, line);
}

void RemoteConsole::progress(const QString& line) {
    output(OutputMessage::Kind::progress, line);
}

void RemoteConsole::output(OutputMessage::Kind kind, const QString& text) const {
    if (m_send)
        m_send(OutputMessage{kind, text});
}

void RemoteConsole::confirm(const QString& question, std::function<void(bool)> answered) {
    if (!m_send) {
        answered(false);
        return;
    }
    m_answered = std::move(answered);
    m_send(QuestionMessage{question});
}

QString RemoteConsole::resolved(const QString& path) const {
    return QDir::cleanPath(QDir(m_folder).absoluteFilePath(path));
}

void RemoteConsole::answer(bool yes) {
    if (const auto answered = std::exchange(m_answered, nullptr))
        answered(yes);
}

void RemoteConsole::disconnect() {
    m_send = nullptr;
    answer(false);
}

}  // namespace wrapio
