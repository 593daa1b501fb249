#include "Shell/Popups.h"

namespace wrapio {

namespace {

constexpr std::size_t mostWindows = 8;

}  // namespace

Popups::Popups(GtkWindow* const& parent, const WebContent& content, DefaultPrograms& programs, bool isDevMode,
               ViewHandler onView)
    : m_parent(parent)
    , m_content(content)
    , m_programs(programs)
    , m_isDevMode(isDevMode)
    , m_onView(std::move(onView)) {}

WebKitWebView* Popups::open(WebKitWebView* opener, const NavigationPolicy& policy) {
    if (m_windows.size() >= mostWindows)
        return nullptr;
    ObjectPtr<WebKitWebView> view = m_content.makePopupView(opener);
    WebKitWebView* shown = view.get();
    m_onView(shown);
    const auto place = m_windows.emplace(m_windows.end());
    PopupWindow::Hooks hooks;
    hooks.handOff = [this](const std::string& address) { m_programs.open(address); };
    hooks.makePopup = [this, shown, policy] { return open(shown, policy); };
    // The call comes from the window's own signal, so it is deleted in a later turn of the main loop; only once.
    hooks.onGone = [this, place, isGoing = std::make_shared<bool>(false)] {
        if (std::exchange(*isGoing, true))
            return;
        struct Removal {
            Popups* popups;
            decltype(place) window;
        };
        g_idle_add_full(
            G_PRIORITY_HIGH,
            [](gpointer data) -> gboolean {
                const auto* removal = static_cast<Removal*>(data);
                removal->popups->m_windows.erase(removal->window);
                return G_SOURCE_REMOVE;
            },
            new Removal{this, place}, [](gpointer data) { delete static_cast<Removal*>(data); });
    };
    *place = std::make_unique<PopupWindow>(m_parent, sizeOfWindow(opener), std::move(view), policy, m_isDevMode,
                                           std::move(hooks));
    return shown;
}

}  // namespace wrapio
