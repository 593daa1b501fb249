// Channels to other processes by a socket in a folder.
#pragma once

#include "Platform/Linux/FileCalls.h"
#include "Platform/LocalChannel.h"

#include <QString>

#include <memory>

class QSocketNotifier;

namespace wrapio {

/// One end of a connected socket.
class LocalSocketChannel final : public LocalChannel {
public:
    /// `socket` is connected and does not block.
    explicit LocalSocketChannel(posix::FileDescriptor socket);
    /// What has not gone out by now is lost.
    ~LocalSocketChannel() override;

    void listen(Events events) override;
    void send(const QByteArray& bytes) override;

private:
    void readAvailable();
    void writeWaiting();
    void stop();

    posix::FileDescriptor m_socket;
    Events m_events;
    QByteArray m_waiting;
    std::unique_ptr<QSocketNotifier> m_readable;
    std::unique_ptr<QSocketNotifier> m_writable;
};

/// Listens at FOLDER/.socket, which nobody but this user can open; others are turned away besides.
class LocalSocketServer final : public LocalServer {
public:
    /// `folder` is an absolute path; it must exist when the server opens.
    explicit LocalSocketServer(QString folder);
    ~LocalSocketServer() override;

    [[nodiscard]] FileResult<void> open(Accepted accepted) override;
    void close() override;

private:
    void acceptWaiting();

    QString m_folder;
    posix::FileDescriptor m_socket;
    Accepted m_accepted;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

/// Calls whoever listens at FOLDER/.socket. Does not wait; needs no event loop yet.
[[nodiscard]] std::unique_ptr<LocalChannel> callLocalSocket(const QString& folder);

}  // namespace wrapio
