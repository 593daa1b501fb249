#include "Platform/Linux/LocalSocket.h"

#include <QFile>
#include <QSocketNotifier>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdio>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr auto socketName = ".socket";
constexpr std::size_t readSize = 65536;

posix::FileDescriptor openFolder(const QString& folder) {
    return posix::openAt(AT_FDCWD, QFile::encodeName(folder).constData(), O_PATH | O_DIRECTORY);
}

/// A socket's address has room for about a hundred bytes only, and folders lie deeper than that: the way leads over the
/// open folder.
sockaddr_un addressIn(const posix::FileDescriptor& folder) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/%s", folder.get(), socketName);
    return address;
}

const sockaddr* generic(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

posix::FileDescriptor newSocket() {
    return posix::FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

bool belongsToThisUser(const posix::FileDescriptor& socket) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
}

/// A notifier may be calling at this moment, so it goes later.
void retire(std::unique_ptr<QSocketNotifier>& notifier) {
    if (!notifier)
        return;
    notifier->setEnabled(false);
    notifier->disconnect();
    notifier.release()->deleteLater();
}

}  // namespace

LocalSocketChannel::LocalSocketChannel(posix::FileDescriptor socket)
    : m_socket(std::move(socket)) {}

LocalSocketChannel::~LocalSocketChannel() {
    stop();
}

void LocalSocketChannel::listen(Events events) {
    m_events = std::move(events);
    m_readable = std::make_unique<QSocketNotifier>(m_socket.get(), QSocketNotifier::Read);
    QObject::connect(m_readable.get(), &QSocketNotifier::activated, m_readable.get(), [this] { readAvailable(); });
    writeWaiting();
}

void LocalSocketChannel::readAvailable() {
    std::array<char, readSize> buffer{};
    const ssize_t count = posix::retrying([&] { return ::recv(m_socket.get(), buffer.data(), buffer.size(), 0); });
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK))
        return;
    // Copied, since this may go away in the call.
    if (count > 0) {
        const auto received = m_events.received;
        received(QByteArray(buffer.data(), count));
        return;
    }
    const auto closed = m_events.closed;
    stop();
    closed();
}

void LocalSocketChannel::send(const QByteArray& bytes) {
    if (!m_socket.isOpen())
        return;
    m_waiting += bytes;
    writeWaiting();
}

void LocalSocketChannel::writeWaiting() {
    qsizetype sent = 0;
    while (sent < m_waiting.size()) {
        const char* const next = m_waiting.constData() + sent;
        const auto left = static_cast<std::size_t>(m_waiting.size() - sent);
        const ssize_t count = posix::retrying([&] { return ::send(m_socket.get(), next, left, MSG_NOSIGNAL); });
        if (count < 0 && errno != EAGAIN && errno != EWOULDBLOCK)
            sent = m_waiting.size();  // nobody reads it any more; reading tells so
        if (count < 0)
            break;
        sent += count;
    }
    m_waiting.remove(0, sent);
    // A notifier needs an event loop, which the side that calls gets only later.
    if (!m_waiting.isEmpty() && !m_writable && m_readable) {
        m_writable = std::make_unique<QSocketNotifier>(m_socket.get(), QSocketNotifier::Write);
        QObject::connect(m_writable.get(), &QSocketNotifier::activated, m_writable.get(), [this] { writeWaiting(); });
    }
    if (m_writable)
        m_writable->setEnabled(!m_waiting.isEmpty());
}

void LocalSocketChannel::stop() {
    retire(m_readable);
    retire(m_writable);
    m_socket.reset();
}

LocalSocketServer::LocalSocketServer(QString folder)
    : m_folder(std::move(folder)) {}

LocalSocketServer::~LocalSocketServer() {
    close();
}

FileResult<void> LocalSocketServer::open(Accepted accepted) {
    const QString path = m_folder + u'/' + QLatin1StringView(socketName);
    const auto folder = openFolder(m_folder);
    posix::FileDescriptor socket = newSocket();
    if (!folder.isOpen() || !socket.isOpen())
        return tl::unexpected(posix::lastError("listen at", path));
    ::unlinkat(folder.get(), socketName, 0);
    const sockaddr_un address = addressIn(folder);
    // Before it has a name, so that it never stands there open to all.
    if (::fchmod(socket.get(), S_IRUSR | S_IWUSR) != 0 || ::bind(socket.get(), generic(address), sizeof address) != 0 ||
        ::listen(socket.get(), SOMAXCONN) != 0)
        return tl::unexpected(posix::lastError("listen at", path));
    m_socket = std::move(socket);
    m_accepted = std::move(accepted);
    m_notifier = std::make_unique<QSocketNotifier>(m_socket.get(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { acceptWaiting(); });
    return {};
}

void LocalSocketServer::acceptWaiting() {
    while (m_socket.isOpen()) {
        posix::FileDescriptor socket(posix::retrying(
            [this] { return ::accept4(m_socket.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK); }));
        if (!socket.isOpen())
            return;
        if (belongsToThisUser(socket))
            m_accepted(std::make_unique<LocalSocketChannel>(std::move(socket)));
    }
}

void LocalSocketServer::close() {
    if (!m_socket.isOpen())
        return;
    if (const auto folder = openFolder(m_folder); folder.isOpen())
        ::unlinkat(folder.get(), socketName, 0);
    retire(m_notifier);
    m_socket.reset();
}

std::unique_ptr<LocalChannel> callLocalSocket(const QString& folder) {
    const auto opened = openFolder(folder);
    posix::FileDescriptor socket = newSocket();
    if (!opened.isOpen() || !socket.isOpen())
        return nullptr;
    const sockaddr_un address = addressIn(opened);
    const int connected = posix::retrying([&] { return ::connect(socket.get(), generic(address), sizeof address); });
    if (connected != 0 || !belongsToThisUser(socket))
        return nullptr;
    return std::make_unique<LocalSocketChannel>(std::move(socket));
}

}  // namespace wrapio
