// Runs the tests of the components.
#include "Views/Components/Components.h"

#include <QQmlEngine>
#include <QtQuickTest>

class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine* engine) { wrapio::useComponents(*engine); }
};

QUICK_TEST_MAIN_WITH_SETUP(ComponentsQmlTest, Setup)

#include "ComponentsQmlTest.moc"
