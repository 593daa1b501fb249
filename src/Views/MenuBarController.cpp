#include "Views/MenuBarController.h"

#include "Platform/Diagnostics.h"

#include <QUrl>

#include <map>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// The error as programmers write it.
QString debugDescription(const AppLifecycleError& error) {
    return u"appNotFound("_s + QString::fromUtf8(QUrl::fromLocalFile(error.bundleURL()).toEncoded()) + u')';
}

}  // namespace

MenuBarController::MenuBarController(MenuBarServices services, MenuBarMenu& menu)
    : m_services(services)
    , m_menu(menu)
    , m_self(std::make_shared<MenuBarController*>(this)) {
    printDiagnostics(u"✅ [MenuBarController] Initializing..."_s);
    m_menu.setDelegate(this);
    subscribe();
    rebuildMenu();
    setupEventMonitors();
    printDiagnostics(u"✅ [MenuBarController] Initialization complete"_s);
}

MenuBarController::~MenuBarController() {
    m_menu.setDelegate(nullptr);
}

/// Subscribers are told the present value once, too; that comes in a later turn, like every change.
void MenuBarController::subscribe() {
    cancellables.push_back(m_services.store.configurationsProperty().onDidChange(rebuildingLater()));
    cancellables.push_back(m_services.lifecycle.runningAppIdsProperty().onDidChange(rebuildingLater()));
    for (int subscription = 0; subscription < 2; ++subscription)
        rebuildingLater()();
    cancellables.push_back(m_services.preview.isVisibleProperty().onDidChange([this] { updateWatching(); }));
}

std::function<void()> MenuBarController::rebuildingLater() {
    return [weak = std::weak_ptr(m_self), &scheduler = m_services.scheduler] {
        scheduler.async([weak] {
            if (const auto self = weak.lock())
                (*self)->rebuildMenu();
        });
    };
}

void MenuBarController::setupEventMonitors() {
    localEventMonitor = m_services.keys.addLocalMonitor([this] { handleFlagsChanged(); });
    globalEventMonitor = m_services.keys.addGlobalMonitor([this] { handleFlagsChanged(); });
}

/// Keys matter only while there is something that they could show or hide.
void MenuBarController::updateWatching() {
    m_services.keys.setWatching(m_isMenuOpen || m_services.preview.isVisible());
}

void MenuBarController::handleFlagsChanged() {
    const bool isVisible = m_services.preview.isVisible();
    if (m_services.keys.isOptionHeld()) {
        if (currentHighlightedConfig && !isVisible) {
            printDiagnostics(u"⌥ [MenuBar] Option pressed - showing preview for: "_s +
                             currentHighlightedConfig->displayName());
            m_services.preview.showPreview(*currentHighlightedConfig);
        }
        return;
    }
    if (!isVisible)
        return;
    printDiagnostics(u"⌥ [MenuBar] Option released - hiding preview"_s);
    m_services.preview.hidePreview();
    if (!m_menu.hasHighlightedItem())
        currentHighlightedConfig.reset();
}

void MenuBarController::menuWillOpen() {
    m_isMenuOpen = true;
    updateWatching();
}

void MenuBarController::menuWillHighlight(const MenuItem* item) {
    hoverDebounceWorkItem.cancel();
    if (item && item->representedObject)
        hoverOver(*item->representedObject);
    else
        moveOffItem();
}

void MenuBarController::hoverOver(const AppConfiguration& config) {
    currentHighlightedConfig = config;
    printDiagnostics(u"🔍 [MenuBar] Hovering over: "_s + config.displayName());
    if (!m_services.keys.isOptionHeld())
        return;
    hoverDebounceWorkItem = m_services.scheduler.after(debounceInterval, [this, config] {
        printDiagnostics(u"🔍 [MenuBar] Showing preview for: "_s + config.displayName());
        m_services.preview.showPreview(config);
    });
}

void MenuBarController::moveOffItem() {
    if (m_services.keys.isOptionHeld()) {
        printDiagnostics(u"⌥ [MenuBar] Moving off item, but Option held - persisting preview"_s);
        return;
    }
    hoverDebounceWorkItem = m_services.scheduler.after(debounceInterval, [this] {
        printDiagnostics(u"🔍 [MenuBar] Hiding preview (moved off item)"_s);
        currentHighlightedConfig.reset();
        m_services.preview.hidePreview();
    });
}

void MenuBarController::menuDidClose() {
    printDiagnostics(u"🔍 [MenuBar] Menu closed"_s);
    hoverDebounceWorkItem.cancel();
    m_isMenuOpen = false;
    if (m_services.keys.isOptionHeld()) {
        printDiagnostics(u"⌥ [MenuBar] Menu closed but Option held - persisting preview"_s);
    } else {
        currentHighlightedConfig.reset();
        m_services.preview.hidePreview();
    }
    updateWatching();
}

void MenuBarController::menuDidChoose(const MenuItem& item) {
    switch (item.action) {
    case MenuAction::none:
        break;
    case MenuAction::launchOrFocusApp:
        launchOrFocusApp(item);
        break;
    case MenuAction::openManager:
        openManager();
        break;
    case MenuAction::quitAllApps:
        quitAllApps();
        break;
    case MenuAction::quitWrapio:
        quitWrapio();
        break;
    }
}

void MenuBarController::launchOrFocusApp(const MenuItem& item) {
    printDiagnostics(u"🖱️ [MenuBar] launchOrFocusApp called"_s);
    if (!item.representedObject) {
        printDiagnostics(u"❌ [MenuBar] No config in representedObject!"_s);
        return;
    }
    const AppConfiguration config = *item.representedObject;
    printDiagnostics(u"🖱️ [MenuBar] Config: "_s + config.displayName());
    const bool isRunning = m_services.lifecycle.runningAppIds().contains(config.id);
    printDiagnostics(u"🖱️ [MenuBar] Is running: "_s + (isRunning ? u"true"_s : u"false"_s));
    if (isRunning) {
        printDiagnostics(u"🖱️ [MenuBar] Calling focusApp..."_s);
        m_services.lifecycle.focus(config);
        return;
    }
    printDiagnostics(u"🖱️ [MenuBar] Calling launchApp..."_s);
    if (const auto launched = m_services.lifecycle.launch(config); !launched)
        printDiagnostics(u"❌ [MenuBar] Failed to launch app: "_s + debugDescription(launched.error()));
}

void MenuBarController::openManager() {
    m_services.application.activate();
    for (const ApplicationWindow& window : m_services.application.windows()) {
        if (window.title == u"Wrapio" || window.identifier == u"main") {
            m_services.application.makeKeyAndOrderFront(window);
            return;
        }
    }
}

void MenuBarController::quitAllApps() {
    // One look at the processes serves all apps; of several from one bundle the first counts, as in every other place.
    std::map<QString, RunningApplication> running;
    for (const RunningApplication& application : m_services.workspace.runningApplications()) {
        if (application.bundleURL)
            running.emplace(*application.bundleURL, application);
    }
    for (const AppConfiguration& config : m_services.store.configurations()) {
        if (!m_services.lifecycle.runningAppIds().contains(config.id))
            continue;
        const auto found = running.find(m_services.lifecycle.getBundleURL(config));
        if (found != running.end() && !m_services.workspace.terminate(found->second))
            m_services.workspace.forceTerminate(found->second);
    }
}

void MenuBarController::quitWrapio() {
    m_services.application.terminate();
}

}  // namespace wrapio
