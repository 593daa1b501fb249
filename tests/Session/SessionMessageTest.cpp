#include "Session/SessionMessage.h"

#include <QtEndian>

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

std::vector<SessionMessage> everyMessage() {
    CommandMessage command;
    command.arguments = {u"create"_s, u"bücher.example"_s, u"--name"_s, u"🎈 \"x\"\n"_s, u""_s};
    command.folder = u"/home/jö/a b"_s;
    command.environment = {{"DISPLAY", ":7"}, {"WAYLAND_DISPLAY", std::nullopt}, {"XAUTHORITY", "/tmp/\xff\xfe"}};
    command.activationToken = "token\x80";
    return {command,
            TakenMessage{},
            DeclinedMessage{},
            OutputMessage{OutputMessage::Kind::print, u"[\n  1\n]"_s},
            OutputMessage{OutputMessage::Kind::note, u"wrapio: \u202E\u0000 ü"_s},
            OutputMessage{OutputMessage::Kind::progress, u"[1/2]"_s},
            QuestionMessage{u"Remove?"_s},
            AnswerMessage{true},
            AnswerMessage{false},
            FinishedMessage{4}};
}

QByteArray framed(const QByteArray& body) {
    QByteArray bytes(4, '\0');
    qToBigEndian(static_cast<quint32>(body.size()), bytes.data());
    return bytes + body;
}

}  // namespace

TEST(SessionMessage, every_kind_is_read_as_it_was_written) {
    for (const SessionMessage& message : everyMessage()) {
        const auto read = SessionMessageReader().read(encode(message));
        ASSERT_TRUE(read) << read.error().reason.toStdString();
        EXPECT_EQ(*read, std::vector{message});
    }
}

TEST(SessionMessage, is_put_together_from_single_bytes) {
    QByteArray bytes;
    for (const SessionMessage& message : everyMessage())
        bytes += encode(message);
    SessionMessageReader reader;
    std::vector<SessionMessage> all;
    for (const char byte : bytes) {
        const auto read = reader.read(QByteArray(1, byte));
        ASSERT_TRUE(read);
        all.insert(all.end(), read->begin(), read->end());
    }
    EXPECT_EQ(all, everyMessage());
}

TEST(SessionMessage, several_in_one_piece_are_all_read) {
    const QByteArray bytes =
        encode(TakenMessage{}) + encode(FinishedMessage{0}) + encode(AnswerMessage{true}).chopped(1);
    const auto read = SessionMessageReader().read(bytes);
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, (std::vector<SessionMessage>{TakenMessage{}, FinishedMessage{0}}));
}

TEST(SessionMessage, that_is_none_is_refused) {
    for (const QByteArray& body :
         {QByteArray("{}"), QByteArray("no json"), QByteArray("[]"), QByteArray("{\"type\":\"unknown\"}"), QByteArray(),
          QByteArray("{\"type\":\"answer\"}"), QByteArray("{\"type\":\"answer\",\"yes\":\"yes\"}"),
          QByteArray("{\"type\":\"output\",\"kind\":3,\"text\":\"\"}"),
          QByteArray("{\"type\":\"output\",\"kind\":-1,\"text\":\"\"}"),
          QByteArray("{\"type\":\"command\",\"protocol\":1,\"arguments\":[1]}")})
        EXPECT_FALSE(SessionMessageReader().read(framed(body))) << body.constData();
}

TEST(SessionMessage, of_more_bytes_than_any_has_is_refused_before_they_come) {
    EXPECT_FALSE(SessionMessageReader().read(QByteArray("\xff\xff\xff\xff", 4)));
}

TEST(SessionMessage, of_another_protocol_is_read_as_far_as_its_number) {
    const auto read = SessionMessageReader().read(framed("{\"type\":\"command\",\"protocol\":99,\"new\":1}"));
    ASSERT_TRUE(read);
    EXPECT_EQ(std::get<CommandMessage>(read->at(0)).protocol, 99);
}

}  // namespace wrapio
