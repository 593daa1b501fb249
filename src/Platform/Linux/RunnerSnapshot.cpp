#include "Platform/Linux/RunnerSnapshot.h"

#include "Models/AppConfiguration.h"
#include "Platform/Linux/LinuxFileSystem.h"
#include "Platform/Linux/ProcessList.h"
#include "Platform/Linux/SnapshotReply.h"
#include "Platform/PropertyList.h"
#include "Utilities/ApplicationIdentity.h"

#include <QFileInfo>
#include <QLocalSocket>

#include <sys/socket.h>

#include <algorithm>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr double answerWithinSeconds = 2.0;
constexpr qint64 largestPropertyList = 1024LL * 1024;
constexpr qint64 readAtOnce = 1024LL * 1024;

ScreenCapture::Picture failure(const QString& reason) {
    return tl::unexpected(ScreenCaptureError{reason});
}

bool belongsTo(const QLocalSocket& socket, uid_t owner) {
    ucred peer{};
    socklen_t size = sizeof peer;
    const int descriptor = static_cast<int>(socket.socketDescriptor());
    return ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == owner;
}

}  // namespace

/// One question and its answer.
class RunnerSnapshot::Request {
public:
    Request(RunnerSnapshot& parent, Completion completion)
        : m_parent(parent)
        , m_completion(std::move(completion))
        , m_socket(std::make_unique<QLocalSocket>()) {
        QLocalSocket* const socket = m_socket.get();
        socket->setReadBufferSize(readAtOnce);
        QObject::connect(socket, &QLocalSocket::connected, socket, [this] { ask(); });
        QObject::connect(socket, &QLocalSocket::readyRead, socket, [this] { read(); });
        QObject::connect(socket, &QLocalSocket::disconnected, socket, [this] {
            read();
            finish(SnapshotReply::cutOff());
        });
        QObject::connect(socket, &QLocalSocket::errorOccurred, socket, [this](QLocalSocket::LocalSocketError error) {
            if (error != QLocalSocket::PeerClosedError)
                finish(failure(u"the app cannot be asked: "_s + m_socket->errorString()));
        });
        m_limit = m_parent.m_scheduler.after(answerWithinSeconds,
                                             [this] { finish(failure(u"the app did not answer in time"_s)); });
    }
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;
    ~Request() { m_socket->disconnect(); }

    void start(const QString& path) { m_socket->connectToServer(path); }

private:
    void ask() {
        if (!belongsTo(*m_socket, m_parent.m_owner)) {
            finish(failure(u"the app belongs to somebody else"_s));
            return;
        }
        m_socket->write("snapshot\n");
    }

    void read() {
        while (m_completion && m_socket->bytesAvailable() > 0) {
            if (const auto outcome = m_reply.append(m_socket->read(readAtOnce)))
                finish(*outcome);
        }
    }

    /// Later than the call that asked, since a socket that is not there is noticed at once.
    void finish(const ScreenCapture::Picture& picture) {
        const auto completion = std::exchange(m_completion, nullptr);
        if (!completion)
            return;
        m_limit.cancel();
        m_end = m_parent.m_scheduler.after(0, [this, completion, picture] {
            RunnerSnapshot& parent = m_parent;
            const auto call = completion;
            const auto result = picture;
            parent.drop(*this);
            call(result);
        });
    }

    RunnerSnapshot& m_parent;
    Completion m_completion;
    std::unique_ptr<QLocalSocket> m_socket;
    SnapshotReply m_reply;
    ScheduledTask m_limit;
    ScheduledTask m_end;
};

RunnerSnapshot::RunnerSnapshot(std::optional<QString> runtimeFolder, Scheduler& scheduler, uid_t owner)
    : m_runtimeFolder(std::move(runtimeFolder))
    , m_scheduler(scheduler)
    , m_owner(owner) {}

RunnerSnapshot::~RunnerSnapshot() = default;

std::optional<QString> RunnerSnapshot::runtimeFolderOfSession() {
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return folder.startsWith(u'/') && QFileInfo(folder).isDir() ? std::optional(folder) : std::nullopt;
}

std::optional<QUuid> RunnerSnapshot::recordOfProcess(qint64 process) {
    const auto bundle = bundleOfProcess(process);
    const auto bytes = bundle ? LinuxFileSystem().read(*bundle + u"/Contents/Info.plist"_s, largestPropertyList)
                              : FileResult<QByteArray>(QByteArray());
    const auto info = bytes ? PropertyList::parse(*bytes) : std::nullopt;
    if (!info)
        return std::nullopt;
    for (const QString& scheme : info->urlSchemes()) {
        // The scheme of an app is a fixed beginning and the id of its record.
        const QUuid id(scheme.section(u'-', 1));
        if (!id.isNull() && scheme == QString::fromStdString(appUrlScheme(canonicalText(id).toStdString())))
            return id;
    }
    return std::nullopt;
}

QString RunnerSnapshot::socketOf(const QUuid& record) const {
    return m_runtimeFolder.value_or(QString()) + u"/wrapio/"_s + canonicalText(record) + u".snapshot"_s;
}

bool RunnerSnapshot::isOffered(const QUuid& record) const {
    return isPossible() && QFileInfo::exists(socketOf(record));
}

void RunnerSnapshot::take(const QUuid& record, Completion completion) {
    m_requests.push_back(std::make_unique<Request>(*this, std::move(completion)));
    m_requests.back()->start(socketOf(record));
}

void RunnerSnapshot::drop(const Request& request) {
    std::erase_if(m_requests, [&request](const auto& one) { return one.get() == &request; });
}

}  // namespace wrapio
