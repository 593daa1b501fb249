// A display, a window manager and a session bus that are nobody else's.
#pragma once

#include <QDeadlineTimer>
#include <QProcess>
#include <QProcessEnvironment>

namespace wrapio {

/// Starts them on construction, puts them into this process's environment, and ends them with itself.
class PrivateDesktop {
public:
    PrivateDesktop() {
        const QByteArray display = firstLine(m_display, QStringLiteral("Xvfb"),
                                             {"-displayfd", "1", "-screen", "0", "800x600x24", "-noreset", "-nolisten", "tcp"});
        const QByteArray bus =
            firstLine(m_bus, QStringLiteral("dbus-daemon"), {"--session", "--nofork", "--print-address=1"});
        if (display.isEmpty() || bus.isEmpty())
            return;
        qputenv("DISPLAY", ':' + display);
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus);
        m_windowManager.setStandardErrorFile(QProcess::nullDevice());
        m_windowManager.start(QStringLiteral("openbox"), {});
        m_works = m_windowManager.waitForStarted() && isManaged();
    }
    PrivateDesktop(const PrivateDesktop&) = delete;
    PrivateDesktop& operator=(const PrivateDesktop&) = delete;
    ~PrivateDesktop() {
        for (QProcess* const process : {&m_windowManager, &m_bus, &m_display}) {
            process->terminate();
            process->waitForFinished();
        }
    }

    [[nodiscard]] bool works() const { return m_works; }

private:
    /// Waits for the window manager: it leaves windows alone that appear while it starts.
    static bool isManaged() {
        QDeadlineTimer patience(60000);
        while (!patience.hasExpired()) {
            QProcess look;
            look.start(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")});
            if (look.waitForFinished() && look.readAllStandardOutput().contains("window id"))
                return true;
        }
        return false;
    }

    static QByteArray firstLine(QProcess& process, const QString& program, std::initializer_list<const char*> words) {
        QStringList arguments;
        for (const char* const word : words)
            arguments << QString::fromLatin1(word);
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(program, arguments);
        while (!process.canReadLine() && process.waitForReadyRead(20000)) {
        }
        return process.readLine().trimmed();
    }

    QProcess m_display;
    QProcess m_bus;
    QProcess m_windowManager;
    bool m_works = false;
};

}  // namespace wrapio
