// What the manager and the other processes of the program tell each other.
#pragma once

#include "Platform/Caller.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <tl/expected.hpp>

#include <variant>
#include <vector>

namespace wrapio {

/// Asks the manager to carry a command out.
struct CommandMessage {
    static constexpr int currentProtocol = 1;

    int protocol = currentProtocol;
    QStringList arguments;           ///< without the program's name
    QString folder;                  ///< where the command was given; an absolute path
    EnvironmentChanges environment;  ///< for the apps that it starts
    QByteArray activationToken;

    bool operator==(const CommandMessage&) const = default;
};
/// The command has begun: from now on only the manager knows what became of it.
struct TakenMessage {
    bool operator==(const TakenMessage&) const = default;
};
/// Nothing was done, since the manager is about to end.
struct DeclinedMessage {
    bool operator==(const DeclinedMessage&) const = default;
};
/// Something to show.
struct OutputMessage {
    enum class Kind { print, note, progress };
    Kind kind = Kind::print;
    QString text;
    bool operator==(const OutputMessage&) const = default;
};
/// Something to ask; an answer follows.
struct QuestionMessage {
    QString text;
    bool operator==(const QuestionMessage&) const = default;
};
struct AnswerMessage {
    bool yes = false;
    bool operator==(const AnswerMessage&) const = default;
};
/// The command has ended.
struct FinishedMessage {
    int status = 0;
    bool operator==(const FinishedMessage&) const = default;
};

using SessionMessage = std::variant<CommandMessage, TakenMessage, DeclinedMessage, OutputMessage, QuestionMessage,
                                    AnswerMessage, FinishedMessage>;

/// The bytes of a message on a channel.
[[nodiscard]] QByteArray encode(const SessionMessage& message);

/// The other side does not speak as we do.
struct BadSessionMessage {
    QString reason;
};

/// Puts messages together from the pieces in which their bytes arrive.
class SessionMessageReader {
public:
    /// No message is longer.
    static constexpr qsizetype longestMessage = 64 * 1024 * 1024;

    /// The messages that `bytes` complete, in order. After a failure nothing more can be read.
    [[nodiscard]] tl::expected<std::vector<SessionMessage>, BadSessionMessage> read(const QByteArray& bytes);

private:
    QByteArray m_waiting;
};

}  // namespace wrapio
