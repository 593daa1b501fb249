// Whether the person wants things on the screen to move.
#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QSet>
#include <QString>

#include <functional>

namespace wrapio {

/// What the desktop's settings say of animations, asked through its portal and followed from then on. Main thread.
class LinuxMotion final : public QObject {
    Q_OBJECT

public:
    /// Calls `tell` with true when motion is to be reduced, and whenever that changes; never before follow().
    explicit LinuxMotion(std::function<void(bool)> tell)
        : m_tell(std::move(tell)) {}

    /// Asks and listens, without waiting; once is enough. Where there is no portal nothing is ever told.
    void follow();

private Q_SLOTS:
    void changed(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void ask(const QString& group, const QString& key);

    std::function<void(bool)> m_tell;
    QSet<QString> m_reducing;  ///< the settings that ask for less
    bool m_isFollowing = false;
};

}  // namespace wrapio
