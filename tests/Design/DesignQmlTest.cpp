// Runs the tests of the tokens as bindings see them.
#include "Design/Design.h"

#include <QQmlEngine>
#include <QtQuickTest>

class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine* engine) { wrapio::useDesign(*engine); }
};

QUICK_TEST_MAIN_WITH_SETUP(DesignQmlTest, Setup)

#include "DesignQmlTest.moc"
