// wrapio-screenshots FOLDER: writes a picture of every state of the screens, to be looked at.
#include "Offline/DashboardScreen.h"
#include "Platform/Linux/QtScheduler.h"
#include "Utilities/NotificationCenter.h"
#include "Views/DashboardWindow.h"

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr int usageError = 2;
constexpr QSize usual(1024, 768);
constexpr QSize narrow(800, 600);
constexpr QSize wide(1920, 1080);
/// For how long what moves gets to come to rest, in milliseconds.
constexpr int restTime = 900;

/// One open window over a recorded catalogue.
struct Scene {
    OfflineFixture& fixture;
    DashboardWindow& dashboard;

    [[nodiscard]] DashboardViewModel& model() const { return *dashboard.viewModel(); }
    [[nodiscard]] ConfigurationViewModel& form() const { return model().editor()->configuration(); }
    [[nodiscard]] QString app(int number) const {
        return canonicalText(fixture.store().configurations().at(static_cast<std::size_t>(number)).id);
    }
    /// Cells have no owner among objects, only a place on the screen.
    [[nodiscard]] QQuickItem* find(const char* type, int number = 0) const {
        return findBelow(dashboard.window()->contentItem(), type, number);
    }

    static QQuickItem* findBelow(const QQuickItem* item, const char* type, int& number) {
        for (QQuickItem* child : item->childItems()) {
            if (!child->isVisible())
                continue;
            if (QLatin1String(child->metaObject()->className()).startsWith(QLatin1String(type)) && number-- == 0)
                return child;
            if (QQuickItem* const found = findBelow(child, type, number))
                return found;
        }
        return nullptr;
    }
};

struct State {
    QString name;
    QString fixture;
    QSize size = usual;
    double textScale = 1;
    std::function<void(const Scene&)> prepare = [](const Scene&) {};
};

void rest() {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < restTime)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
}

void point(const Scene& scene, int card) {
    const QQuickItem* const item = scene.find("AppGridItem", card);
    const QPointF at = item ? item->mapToScene({40, 40}) : QPointF();
    QMouseEvent move(QEvent::MouseMove, at, scene.dashboard.window()->mapToGlobal(at), Qt::NoButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(scene.dashboard.window(), &move);
}

void openMenu(const Scene& scene) {
    QQuickItem* const grid = scene.find("AppGrid_");
    QQuickItem* const card = scene.find("AppGridItem", 1);
    QMetaObject::invokeMethod(grid->property("menu").value<QObject*>(), "openFor",
                              Q_ARG(QVariant, QVariant::fromValue(card)), Q_ARG(double, 90.0), Q_ARG(double, 80.0));
}

void edit(const Scene& scene, double scrolled) {
    scene.model().editApp(scene.app(0));
    scene.form().setThemeColor(u"#1E6FD9"_s);
    scene.form().setThemeOpacity(0.85);
    scene.form().insertDarkModeTemplate();
    scene.form().setCSSExpanded(true);
    rest();
    if (QQuickItem* const view = scene.find("ConfigurationView")) {
        auto* const scrolling = view->property("scrolling").value<QQuickItem*>();
        const double room = scrolling->property("contentHeight").toDouble() - scrolling->height();
        scrolling->setProperty("contentY", std::max(0.0, room * scrolled));
    }
}

void rename(const Scene& scene, std::size_t number, const QString& name) {
    AppConfiguration record = scene.fixture.store().configurations().at(number);
    record.appName = name;
    scene.fixture.store().updateConfiguration(record);
}

std::vector<State> states() {
    std::vector<State> all = {
        {.name = u"empty"_s, .fixture = u"empty"_s},
        {.name = u"one"_s, .fixture = u"one"_s},
        {.name = u"dozen"_s, .fixture = u"dozen"_s},
        {.name = u"thousand"_s, .fixture = u"thousand"_s, .size = wide},
        {.name = u"running"_s, .fixture = u"running"_s, .prepare = [](const Scene& s) { point(s, 1); }},
        {.name = u"outdated"_s, .fixture = u"outdated"_s, .prepare = [](const Scene& s) { point(s, 2); }},
        {.name = u"names"_s,
         .fixture = u"running"_s,
         .prepare =
             [](const Scene& s) {
                 rename(s, 0, u"A name that goes on and on and would not fit into any card"_s);
                 rename(s, 1, u"דואר אלקטרוני ויומן פגישות משותף"_s);
                 rename(s, 2, u"البريد"_s);
                 rename(s, 3, u"Notes. Chat/Mail"_s);
             }},
        {.name = u"filter"_s,
         .fixture = u"dozen"_s,
         .prepare = [](const Scene& s) { s.model().setSearchText(u"ma"_s); }},
        {.name = u"no-match"_s,
         .fixture = u"dozen"_s,
         .prepare = [](const Scene& s) { s.model().setSearchText(u"xyz"_s); }},
        {.name = u"menu"_s, .fixture = u"running"_s, .prepare = openMenu},
        {.name = u"delete"_s,
         .fixture = u"dozen"_s,
         .prepare = [](const Scene& s) { s.model().requestDelete(s.app(0)); }},
        {.name = u"undo"_s,
         .fixture = u"dozen"_s,
         .prepare =
             [](const Scene& s) {
                 s.model().requestDelete(s.app(0));
                 s.model().confirmDelete();
             }},
        {.name = u"error"_s, .fixture = u"failing"_s, .prepare = [](const Scene& s) { s.model().launchApp(s.app(0)); }},
        {.name = u"exporting"_s,
         .fixture = u"dozen"_s,
         .prepare =
             [](const Scene& s) {
                 s.model().exportApps();
                 s.fixture.exchange.tell({5, 12});
             }},
        {.name = u"create"_s, .fixture = u"dozen"_s, .prepare = [](const Scene& s) { s.model().createNewApp(); }},
        {.name = u"create-invalid"_s,
         .fixture = u"dozen"_s,
         .prepare =
             [](const Scene& s) {
                 s.model().createNewApp();
                 s.form().setUrlInput(u"localhost:3000"_s);
                 s.form().setAppNameInput(u"Mail/Chat"_s);
             }},
        {.name = u"template"_s,
         .fixture = u"empty"_s,
         .prepare = [](const Scene& s) { s.model().createFromTemplate(u"localhost-dev"_s); }},
        {.name = u"edit"_s, .fixture = u"dozen"_s, .prepare = [](const Scene& s) { edit(s, 0); }},
        {.name = u"edit-injection"_s, .fixture = u"dozen"_s, .prepare = [](const Scene& s) { edit(s, 0.55); }},
        {.name = u"edit-appearance"_s, .fixture = u"dozen"_s, .prepare = [](const Scene& s) { edit(s, 1); }},
        {.name = u"edit-remove"_s,
         .fixture = u"dozen"_s,
         .prepare =
             [](const Scene& s) {
                 edit(s, 0);
                 QMetaObject::invokeMethod(s.find("EditorActions"), "removeRequested");
             }},
        {.name = u"edit-missing"_s,
         .fixture = u"dozen"_s,
         .prepare =
             [](const Scene& s) {
                 s.model().editApp(s.app(0));
                 s.fixture.store().removeApp(s.fixture.store().configurations().front().id);
             }},
        {.name = u"edit-generation-failed"_s,
         .fixture = u"failing"_s,
         .prepare =
             [](const Scene& s) {
                 edit(s, 0);
                 static_cast<void>(s.model().editor()->save());
             }},
    };
    for (const QString& name : {u"empty"_s, u"outdated"_s, u"edit"_s}) {
        const auto found = std::find_if(all.begin(), all.end(), [&name](const State& s) { return s.name == name; });
        State small = *found;
        small.name += u"-narrow"_s;
        small.size = narrow;
        State large = *found;
        large.name += u"-large-text"_s;
        large.textScale = 2;
        all.push_back(small);
        all.push_back(large);
    }
    return all;
}

bool draw(const State& state, const QString& folder) {
    QtScheduler scheduler;
    OfflineFixture fixture(state.fixture, scheduler);
    addTemplatePictures(fixture.resources);
    rest();
    NotificationCenter notifications;
    DashboardWindow dashboard(fixture.services(), notifications);
    if (!dashboard.show())
        return false;
    auto* const appearance =
        qmlEngine(dashboard.window())->singletonInstance<QObject*>(qmlTypeId("Wrapio.Design.Core", 1, 0, "Appearance"));
    appearance->setProperty("textScale", state.textScale);
    dashboard.window()->resize(state.size);
    rest();
    state.prepare({fixture, dashboard});
    rest();
    return dashboard.window()->grabWindow().save(folder + u'/' + state.name + u".png"_s);
}

}  // namespace

int takeScreenshots(const QString& folder, const QString& only) {
    bool isDrawn = true;
    for (const State& state : states()) {
        if (only.isEmpty() || state.name == only)
            isDrawn = draw(state, folder) && isDrawn;
    }
    return isDrawn ? 0 : 1;
}

}  // namespace wrapio

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Wrapio"));
    const QString folder = QGuiApplication::arguments().value(1);
    if (folder.isEmpty() || !QDir().mkpath(folder)) {
        std::fputs("usage: wrapio-screenshots FOLDER [STATE]\n", stderr);
        return wrapio::usageError;
    }
    return wrapio::takeScreenshots(folder, QGuiApplication::arguments().value(2));
}
