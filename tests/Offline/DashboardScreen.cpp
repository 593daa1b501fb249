#include "Offline/DashboardScreen.h"

#include "Platform/Linux/QtScheduler.h"
#include "Utilities/NotificationCenter.h"
#include "Views/DashboardWindow.h"

#include <QDir>
#include <QGuiApplication>
#include <QImageReader>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize pictureSize(256, 256);

}  // namespace

void addTemplatePictures(FakeResources& resources) {
    const QDir folder(QStringLiteral(WRAPIO_TEMPLATE_PICTURES));
    for (const QFileInfo& file : folder.entryInfoList({u"*.svg"_s})) {
        QImageReader reader(file.filePath());
        reader.setScaledSize(pictureSize);
        resources.images[file.completeBaseName()] = reader.read();
    }
}

int showDashboard(const QString& name) {
    QtScheduler scheduler;
    OfflineFixture fixture(name, scheduler);
    addTemplatePictures(fixture.resources);
    NotificationCenter notifications;
    DashboardWindow window(fixture.services(), notifications);
    QObject::connect(&window, &DashboardWindow::closed, qApp, &QCoreApplication::quit);
    return window.show() ? QGuiApplication::exec() : 1;
}

}  // namespace wrapio
