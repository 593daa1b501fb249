// A program on the session bus, as far as others can tell.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QMutex>
#include <QThread>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace wrapio {

/// Has a connection and a thread of its own, so that it answers while the test's thread waits.
class BusService {
public:
    /// Answers a call; an invalid message means that it never will.
    using Answer = std::function<QDBusMessage(const QDBusMessage&)>;

    BusService(const QString& name, const QString& path, Answer answer)
        : m_connectionName(QStringLiteral("service of ") + name)
        , m_object(std::move(answer)) {
        auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName);
        EXPECT_TRUE(bus.registerVirtualObject(path, &m_object, QDBusConnection::SubPath));
        m_object.moveToThread(&m_thread);
        m_thread.start();
        EXPECT_TRUE(bus.registerService(name));
    }
    BusService(const BusService&) = delete;
    BusService& operator=(const BusService&) = delete;
    ~BusService() {
        m_thread.quit();
        m_thread.wait();
        QDBusConnection::disconnectFromBus(m_connectionName);
    }

    /// The calls so far.
    [[nodiscard]] std::vector<QDBusMessage> calls() const { return m_object.calls(); }

private:
    class Object final : public QDBusVirtualObject {
    public:
        explicit Object(Answer answer)
            : m_answer(std::move(answer)) {}
        QString introspect(const QString&) const override { return {}; }
        bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
            {
                const QMutexLocker lock(&m_mutex);
                m_calls.push_back(message);
            }
            const QDBusMessage answer = m_answer(message);
            if (answer.type() != QDBusMessage::InvalidMessage)
                connection.send(answer);
            return true;
        }
        std::vector<QDBusMessage> calls() const {
            const QMutexLocker lock(&m_mutex);
            return m_calls;
        }

    private:
        Answer m_answer;
        mutable QMutex m_mutex;
        std::vector<QDBusMessage> m_calls;
    };

    QString m_connectionName;
    QThread m_thread;
    Object m_object;
};

}  // namespace wrapio
