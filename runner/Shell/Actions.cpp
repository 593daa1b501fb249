#include "Shell/Actions.h"

#include "Shell/GObjects.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace wrapio {

namespace {

struct Command {
    const char* action;
    const char* group;
    const char* title;
    std::array<const char*, 4> keys;  ///< ended by a null; the first one or two are shown
    bool isTool = false;              ///< in developer mode only
};

// The order is that of the shortcuts window.
constexpr std::array<Command, 21> commands{{
    {"win.back", "Pages", "Back", {"<Alt>Left", "Back"}},
    {"win.forward", "Pages", "Forward", {"<Alt>Right", "Forward"}},
    {"win.home", "Pages", "Home", {"<Alt>Home"}},
    {"win.reload", "Pages", "Reload", {"<Control>r", "F5"}},
    {"win.find", "Pages", "Find in page", {"<Control>f"}},
    {"win.find-next", "Pages", "Next match", {"<Control>g", "F3"}},
    {"win.find-previous", "Pages", "Previous match", {"<Control><Shift>g", "<Shift>F3"}},
    {"win.print", "Pages", "Print", {"<Control>p"}},
    {"win.copy-address", "Pages", "Copy address", {"<Control><Shift>c"}},
    {"win.open-in-browser", "Pages", "Open in browser", {"<Control><Shift>o"}},
    {"win.zoom-in", "View", "Larger", {"<Control>plus", "<Control>equal", "<Control>KP_Add"}},
    {"win.zoom-out", "View", "Smaller", {"<Control>minus", "<Control>KP_Subtract"}},
    {"win.zoom-reset", "View", "Usual size", {"<Control>0", "<Control>KP_0"}},
    {"win.full-screen", "View", "Full screen", {"F11"}},
    {"win.permissions", "App", "Permissions", {"<Control><Shift>p"}},
    {"win.clear-data", "App", "Clear data", {"<Control><Shift>Delete"}},
    {"win.shortcuts", "App", "Keyboard shortcuts", {"<Control>question", "<Control>F1"}},
    {"window.close", "App", "Close", {"<Control>w"}},
    {"app.quit", "App", "Quit", {"<Control>q"}},
    {"win.inspect", "Developer", "Inspect page", {"F12", "<Control><Shift>i"}, true},
    {"win.hard-reload",
     "Developer",
     "Reload without the cache",
     {"<Control><Shift>r", "<Shift>F5", "<Control>F5"},
     true},
}};

std::string shortcutXml(const Command& command) {
    std::string keys = command.keys[0];
    if (command.keys[1] != nullptr)
        keys += std::string(" ") + command.keys[1];
    const TextPtr escaped(
        g_markup_printf_escaped("<child><object class='GtkShortcutsShortcut'><property name='title'>%s</property>"
                                "<property name='accelerator'>%s</property></object></child>",
                                command.title, keys.c_str()));
    return escaped.get();
}

std::string shortcutsXml(bool isDevMode) {
    std::string xml = "<interface><object class='GtkShortcutsWindow' id='window'><property name='modal'>1</property>"
                      "<child><object class='GtkShortcutsSection'><property name='section-name'>all</property>"
                      "<property name='max-height'>12</property>";
    std::string group;
    for (const Command& command : commands) {
        if (command.isTool && !isDevMode)
            continue;
        if (group != command.group) {
            xml += group.empty() ? "" : "</object></child>";
            group = command.group;
            xml += "<child><object class='GtkShortcutsGroup'><property name='title'>" + group + "</property>";
        }
        xml += shortcutXml(command);
    }
    return xml + "</object></child></object></child></object></interface>";
}

}  // namespace

void addAction(GActionMap* map, const char* name, std::function<void()> handler) {
    const ObjectPtr<GSimpleAction> action(g_simple_action_new(name, nullptr));
    connectAction(action.get(), "activate", std::move(handler));
    g_action_map_add_action(map, G_ACTION(action.get()));
}

void setActionEnabled(GActionMap* map, const char* name, bool isEnabled) {
    g_simple_action_set_enabled(G_SIMPLE_ACTION(g_action_map_lookup_action(map, name)), isEnabled ? TRUE : FALSE);
}

void bindKeys(GtkApplication* application, bool isDevMode) {
    for (const Command& command : commands) {
        if (isDevMode || !command.isTool)
            gtk_application_set_accels_for_action(application, command.action, command.keys.data());
    }
}

void addShortcutsWindow(GtkApplicationWindow* window, bool isDevMode) {
    // It holds a hundred widgets that most people never look at, so it is made when it is asked for.
    addAction(G_ACTION_MAP(window), "shortcuts", [window, isDevMode] {
        if (gtk_application_window_get_help_overlay(window) == nullptr) {
            const std::string xml = shortcutsXml(isDevMode);
            const ObjectPtr<GtkBuilder> builder(gtk_builder_new_from_string(xml.c_str(), -1));
            gtk_application_window_set_help_overlay(
                window, GTK_SHORTCUTS_WINDOW(gtk_builder_get_object(builder.get(), "window")));
        }
        gtk_window_present(GTK_WINDOW(gtk_application_window_get_help_overlay(window)));
    });
}

}  // namespace wrapio
