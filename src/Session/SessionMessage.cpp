#include "Session/SessionMessage.h"

#include "Models/ConfigurationCoding.h"

#include <QtEndian>

#include <nlohmann/json.hpp>

#include <array>
#include <optional>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// A message is its length, four bytes with the most significant one first, and a JSON object.
constexpr qsizetype headerSize = 4;

std::string text(const QString& value) {
    return value.toStdString();
}

/// Values of the environment are bytes in no particular encoding: each byte becomes the character of its number.
std::string text(const QByteArray& value) {
    return QString::fromLatin1(value).toStdString();
}

struct Writing {
    Json operator()(const CommandMessage& message) const {
        Json arguments = Json::array();
        for (const QString& argument : message.arguments)
            arguments.push_back(text(argument));
        Json environment = Json::array();
        for (const auto& [name, value] : message.environment)
            environment.push_back({text(name), value ? Json(text(*value)) : Json()});
        return {{"type", "command"},          {"protocol", message.protocol},
                {"arguments", arguments},     {"folder", text(message.folder)},
                {"environment", environment}, {"token", text(message.activationToken)}};
    }
    Json operator()(const TakenMessage&) const { return {{"type", "taken"}}; }
    Json operator()(const DeclinedMessage&) const { return {{"type", "declined"}}; }
    Json operator()(const OutputMessage& message) const {
        return {{"type", "output"}, {"kind", static_cast<int>(message.kind)}, {"text", text(message.text)}};
    }
    Json operator()(const QuestionMessage& message) const {
        return {{"type", "question"}, {"text", text(message.text)}};
    }
    Json operator()(const AnswerMessage& message) const { return {{"type", "answer"}, {"yes", message.yes}}; }
    Json operator()(const FinishedMessage& message) const { return {{"type", "finished"}, {"status", message.status}}; }
};

QString textAt(const Json& object, const char* key) {
    return QString::fromStdString(object.at(key).get<std::string>());
}

QByteArray bytesOf(const Json& value) {
    return QString::fromStdString(value.get<std::string>()).toLatin1();
}

CommandMessage commandOf(const Json& object) {
    CommandMessage message;
    message.protocol = object.at("protocol").get<int>();
    // Of another protocol nothing else can be relied on.
    if (message.protocol != CommandMessage::currentProtocol)
        return message;
    for (const Json& argument : object.at("arguments"))
        message.arguments << QString::fromStdString(argument.get<std::string>());
    message.folder = textAt(object, "folder");
    for (const Json& change : object.at("environment")) {
        const Json& value = change.at(1);
        message.environment.emplace_back(bytesOf(change.at(0)),
                                         value.is_null() ? std::nullopt : std::optional(bytesOf(value)));
    }
    message.activationToken = bytesOf(object.at("token"));
    return message;
}

OutputMessage::Kind kindOf(const Json& object) {
    constexpr std::array kinds = {OutputMessage::Kind::print, OutputMessage::Kind::note, OutputMessage::Kind::progress};
    return kinds.at(object.at("kind").get<std::size_t>());
}

/// Throws when the object is no message.
SessionMessage messageOf(const Json& object) {
    const auto type = object.at("type").get<std::string>();
    if (type == "command")
        return commandOf(object);
    if (type == "taken")
        return TakenMessage{};
    if (type == "declined")
        return DeclinedMessage{};
    if (type == "output")
        return OutputMessage{kindOf(object), textAt(object, "text")};
    if (type == "question")
        return QuestionMessage{textAt(object, "text")};
    if (type == "answer")
        return AnswerMessage{object.at("yes").get<bool>()};
    if (type == "finished")
        return FinishedMessage{object.at("status").get<int>()};
    throw std::out_of_range("unknown type");
}

std::optional<SessionMessage> decoded(const QByteArray& body) {
    try {
        return messageOf(Json::parse(body.begin(), body.end()));
    } catch (const std::exception&) {  // of the library: it is no JSON, or none of ours
        return std::nullopt;
    }
}

}  // namespace

QByteArray encode(const SessionMessage& message) {
    const std::string body = std::visit(Writing(), message).dump(-1, ' ', false, Json::error_handler_t::replace);
    QByteArray bytes(headerSize, Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(body.size()), bytes.data());
    return bytes.append(body.data(), static_cast<qsizetype>(body.size()));
}

tl::expected<std::vector<SessionMessage>, BadSessionMessage> SessionMessageReader::read(const QByteArray& bytes) {
    m_waiting += bytes;
    std::vector<SessionMessage> messages;
    qsizetype next = 0;
    while (m_waiting.size() - next >= headerSize) {
        const qsizetype size = qFromBigEndian<quint32>(m_waiting.constData() + next);
        if (size > longestMessage)
            return tl::unexpected(BadSessionMessage{u"a message of %1 bytes"_s.arg(size)});
        if (m_waiting.size() - next - headerSize < size)
            break;
        auto message = decoded(m_waiting.mid(next + headerSize, size));
        if (!message)
            return tl::unexpected(BadSessionMessage{u"a message that is none"_s});
        messages.push_back(std::move(*message));
        next += headerSize + size;
    }
    m_waiting.remove(0, next);
    return messages;
}

}  // namespace wrapio
