// wrapio-gallery FOLDER: draws every component in its states into pictures, to be looked at.
#include "Views/Components/Components.h"

#include <QDir>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickView>

#include <cstdio>

namespace {

using namespace Qt::StringLiterals;

constexpr int usageError = 2;

/// Waits until what loads in the background is there and what moves has come to rest.
bool settle(QQuickView& view) {
    for (int turns = 0; turns < 40; ++turns) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        view.grabWindow();
    }
    return view.status() == QQuickView::Ready;
}

bool draw(const QString& file, const QString& folder, double textScale) {
    QQuickView view;
    wrapio::useComponents(*view.engine());
    view.setColor(QColor::fromRgbF(0.05F, 0.05F, 0.08F));
    view.setInitialProperties({{u"textScale"_s, textScale}});
    view.setSource(QUrl::fromLocalFile(file));
    view.show();
    const QString suffix = textScale > 1 ? u"-large"_s : QString();
    const QString picture = folder + u'/' + QFileInfo(file).baseName() + suffix + u".png"_s;
    return settle(view) && view.grabWindow().save(picture);
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QString folder = QGuiApplication::arguments().value(1);
    if (folder.isEmpty() || !QDir().mkpath(folder)) {
        std::fputs("usage: wrapio-gallery FOLDER\n", stderr);
        return usageError;
    }
    bool isDrawn = true;
    const QDir pages(QStringLiteral(WRAPIO_GALLERY));
    for (const QString& page : pages.entryList({u"*.qml"_s}, QDir::Files)) {
        for (const double scale : {1.0, 2.0})
            isDrawn = draw(pages.filePath(page), folder, scale) && isDrawn;
    }
    return isDrawn ? 0 : 1;
}
