// The items of the menu, top to bottom.
#include "Platform/Diagnostics.h"
#include "Views/MenuBarController.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

constexpr double headerPointSize = 11;

MenuItem separator() {
    MenuItem item;
    item.isEnabled = false;
    item.isSeparator = true;
    return item;
}

MenuItem header(const QString& title) {
    MenuItem item;
    item.title = title;
    item.isEnabled = false;
    item.styledTitle = StyledTitle{.text = title,
                                   .pointSize = headerPointSize,
                                   .weight = FontWeight::semibold,
                                   .color = TitleColor::secondaryLabel,
                                   .dot = std::nullopt};
    return item;
}

MenuItem command(const QString& title, MenuAction action, const QString& key = {}) {
    MenuItem item;
    item.title = title;
    item.action = action;
    if (!key.isEmpty())
        item.keyEquivalent = KeyEquivalent{key, KeyModifier::command};
    return item;
}

void appendSection(MenuItems& items, const QString& title, const std::vector<const AppConfiguration*>& apps,
                   bool isRunning) {
    if (apps.empty())
        return;
    items.push_back(header(title));
    for (const AppConfiguration* const config : apps)
        items.push_back(MenuBarController::makeMenuItem(*config, isRunning));
    items.push_back(separator());
}

}  // namespace

MenuItem MenuBarController::makeMenuItem(const AppConfiguration& config, bool isRunning) {
    MenuItem item = command(config.displayName(), MenuAction::launchOrFocusApp);
    item.representedObject = config;
    if (isRunning) {
        item.styledTitle = StyledTitle{};
        item.styledTitle->text = item.title + u"  "_s;
        item.styledTitle->dot = GreenDot{};
    }
    return item;
}

void MenuBarController::rebuildMenu() {
    printDiagnostics(u"🔄 [MenuBarController] Rebuilding menu..."_s);
    std::vector<const AppConfiguration*> running;
    std::vector<const AppConfiguration*> others;
    for (const AppConfiguration& config : m_services.store.configurations())
        (m_services.lifecycle.runningAppIds().contains(config.id) ? running : others).push_back(&config);

    MenuItems items;
    appendSection(items, u"Running"_s, running, true);
    appendSection(items, u"Apps"_s, others, false);
    items.push_back(command(u"Open Wrapio Manager"_s, MenuAction::openManager, u"o"_s));
    if (!running.empty())
        items.push_back(command(u"Quit All Apps"_s, MenuAction::quitAllApps));
    items.push_back(separator());
    items.push_back(command(u"Quit Wrapio"_s, MenuAction::quitWrapio, u"q"_s));
    m_menu.setDelegate(this);
    m_menu.setItems(std::move(items));
}

}  // namespace wrapio
