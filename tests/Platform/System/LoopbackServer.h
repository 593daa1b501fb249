// A web server on this machine that says byte for byte what a test wants.
#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QMap>
#include <QPointer>
#include <QString>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <functional>
#include <map>
#include <vector>

namespace wrapio {

/// Lives on the main thread and needs its event loop.
class LoopbackServer {
public:
    struct Answer {
        std::vector<QByteArray> pieces;  ///< sent one by one, in turns of the event loop of their own
        bool closes = true;              ///< the connection after the last piece
    };

    LoopbackServer() {
        m_listens = m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            while (QTcpSocket* const socket = m_server.nextPendingConnection())
                serve(*socket);
        });
    }
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;
    ~LoopbackServer() = default;

    [[nodiscard]] bool listens() const { return m_listens; }
    [[nodiscard]] QString url(const QString& path) const {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path);
    }

    /// Answers a path with exactly these bytes.
    void answer(const QByteArray& path, Answer answer) { m_answers[path] = std::move(answer); }
    /// Answers a path with a well-formed response.
    void answer(const QByteArray& path, const QByteArray& status, const QByteArray& headers, const QByteArray& body) {
        answer(path, {{"HTTP/1.1 " + status + "\r\n" + headers + "Content-Length: " + QByteArray::number(body.size()) +
                       "\r\nConnection: close\r\n\r\n" + body}});
    }

    std::vector<QByteArray> requests;  ///< the heads of all that came, in order
    qint64 bytesTaken = 0;             ///< by the clients, of what was sent to them

private:
    void serve(QTcpSocket& socket) {
        QObject::connect(&socket, &QTcpSocket::bytesWritten, &m_server, [this](qint64 count) { bytesTaken += count; });
        QObject::connect(&socket, &QTcpSocket::disconnected, &socket, &QObject::deleteLater);
        QObject::connect(&socket, &QTcpSocket::readyRead, &m_server, [this, &socket] {
            const QByteArray head = socket.peek(65536);
            if (!head.contains("\r\n\r\n"))
                return;
            socket.readAll();
            requests.push_back(head);
            const QByteArray path = head.split(' ').value(1);
            const auto found = m_answers.find(path);
            send(socket, found == m_answers.end() ? Answer{} : found->second, 0);
        });
    }
    void send(QTcpSocket& socket, const Answer& answer, std::size_t index) {
        if (socket.state() != QAbstractSocket::ConnectedState)
            return;
        if (index < answer.pieces.size()) {
            socket.write(answer.pieces[index]);
            QTimer::singleShot(0, &socket, [this, &socket, answer, index] { send(socket, answer, index + 1); });
        } else if (answer.closes) {
            socket.disconnectFromHost();
        }
    }

    QTcpServer m_server;
    bool m_listens = false;
    std::map<QByteArray, Answer> m_answers;
};

}  // namespace wrapio
