// Runs the tests of the screens, over recorded catalogues.
#include "Views/OfflineDashboard.h"
#include "Views/Views.h"

#include <QQmlEngine>
#include <QtQuickTest>

class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine* engine) {
        wrapio::useViews(*engine, m_pictures.favicons(), m_pictures.resources);
        qmlRegisterType<wrapio::OfflineDashboard>("Wrapio.Offline", 1, 0, "OfflineDashboard");
    }

private:
    wrapio::ManualScheduler m_scheduler;
    wrapio::OfflineFixture m_pictures{QStringLiteral("empty"), m_scheduler};
};

QUICK_TEST_MAIN_WITH_SETUP(ViewsQmlTest, Setup)

#include "ViewsQmlTest.moc"
