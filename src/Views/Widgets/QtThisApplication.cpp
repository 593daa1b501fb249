#include "Views/Widgets/QtThisApplication.h"

#include <QGuiApplication>
#include <QWindow>

namespace wrapio {

namespace {

quint64 numberOf(const QWindow* window) {
    return reinterpret_cast<quintptr>(window);
}

}  // namespace

std::vector<ApplicationWindow> QtThisApplication::windows() const {
    std::vector<ApplicationWindow> list;
    for (const QWindow* const window : QGuiApplication::topLevelWindows()) {
        // Menus, tool tips and panels are no windows that one works in.
        if (window->type() == Qt::Window || window->type() == Qt::Dialog)
            list.push_back({numberOf(window), window->title(), window->objectName(), window->type() == Qt::Window});
    }
    return list;
}

void QtThisApplication::makeKeyAndOrderFront(const ApplicationWindow& wanted) {
    for (QWindow* const window : QGuiApplication::topLevelWindows()) {
        if (numberOf(window) != wanted.number)
            continue;
        if (window->windowState() == Qt::WindowMinimized)
            window->setWindowState(Qt::WindowNoState);
        window->setVisible(true);
        window->raise();
        window->requestActivate();
        return;
    }
}

void QtThisApplication::terminate() {
    QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit, Qt::QueuedConnection);
}

}  // namespace wrapio
