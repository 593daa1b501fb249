// Runs the tests of the screens, over recorded catalogues.
#include "Offline/DashboardScreen.h"
#include "Views/OfflineDashboard.h"
#include "Views/Views.h"

#include <QQmlEngine>
#include <QQuickImageProvider>
#include <QtQuickTest>

/// The icons of whichever catalogue a test has chosen.
class RecordedIcons final : public QQuickImageProvider {
public:
    RecordedIcons()
        : QQuickImageProvider(QQuickImageProvider::Image) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& /*requestedSize*/) override {
        const QImage icon = wrapio::OfflineDashboard::savedIcon(id.section(u'?', 0, 0));
        if (size)
            *size = icon.size();
        return icon;
    }
};

class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine* engine) {
        wrapio::addTemplatePictures(m_pictures.resources);
        wrapio::useViews(*engine, m_pictures.favicons(), m_pictures.resources);
        engine->addImageProvider(QStringLiteral("appicon"), new RecordedIcons);
        qmlRegisterType<wrapio::OfflineDashboard>("Wrapio.Offline", 1, 0, "OfflineDashboard");
    }

private:
    wrapio::ManualScheduler m_scheduler;
    wrapio::OfflineFixture m_pictures{QStringLiteral("empty"), m_scheduler};
};

QUICK_TEST_MAIN_WITH_SETUP(ViewsQmlTest, Setup)

#include "ViewsQmlTest.moc"
