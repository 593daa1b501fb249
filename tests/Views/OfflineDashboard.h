// The dashboard's view model over a recorded catalogue, for tests that are written in QML.
#pragma once

#include "Fakes/ManualScheduler.h"
#include "Offline/OfflineFixture.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <mutex>

namespace wrapio {

class OfflineDashboard : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString fixture READ fixture WRITE setFixture NOTIFY changed)
    Q_PROPERTY(wrapio::DashboardViewModel* viewModel READ viewModel NOTIFY changed)

public:
    using QObject::QObject;
    ~OfflineDashboard() override;

    /// The saved icon of an app of the catalogue that was chosen last; null when there is none. Any thread.
    [[nodiscard]] static QImage savedIcon(const QString& id);

    [[nodiscard]] QString fixture() const { return m_name; }
    void setFixture(const QString& name);
    [[nodiscard]] DashboardViewModel* viewModel() { return m_fixture ? &m_fixture->dashboard() : nullptr; }

    /// Lets `seconds` pass, and everything happen that falls due.
    Q_INVOKABLE void advance(double seconds) { m_scheduler.advance(seconds); }
    Q_INVOKABLE void runPending() { m_scheduler.runPending(); }
    /// The names of the apps, in the catalogue's order.
    Q_INVOKABLE [[nodiscard]] QStringList names() const;
    Q_INVOKABLE [[nodiscard]] QString idOf(const QString& name) const;
    /// Names of apps that run.
    Q_INVOKABLE [[nodiscard]] QStringList running() const;
    Q_INVOKABLE void rename(const QString& name, const QString& other);
    Q_INVOKABLE void remove(const QString& name);
    Q_INVOKABLE [[nodiscard]] int exports() const { return m_fixture->exchange.exports; }
    Q_INVOKABLE [[nodiscard]] int imports() const { return m_fixture->exchange.imports; }
    Q_INVOKABLE void tellProgress(int current, int total) const { m_fixture->exchange.tell({current, total}); }
    /// The files that the person was asked for.
    Q_INVOKABLE [[nodiscard]] int openDialogs() const;
    /// The addresses that were handed to the desktop.
    Q_INVOKABLE [[nodiscard]] QStringList opened() const;
    /// The saved record's field of that name, as text.
    Q_INVOKABLE [[nodiscard]] QString saved(const QString& name, const QString& field) const;

Q_SIGNALS:
    void changed();

private:
    static std::mutex s_iconsMutex;
    static FaviconService* s_icons;

    ManualScheduler m_scheduler;
    QString m_name;
    std::unique_ptr<OfflineFixture> m_fixture;
};

}  // namespace wrapio
