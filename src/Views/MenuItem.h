// One line of the menu, as a value.
#pragma once

#include "Models/AppConfiguration.h"

#include <QString>

#include <optional>
#include <vector>

namespace wrapio {

/// What choosing an item does.
enum class MenuAction { none, launchOrFocusApp, openManager, quitAllApps, quitWrapio };

enum class KeyModifier { command };

/// A key that chooses an item while the menu is open.
struct KeyEquivalent {
    QString key;  ///< one lower-case letter
    KeyModifier modifier = KeyModifier::command;

    bool operator==(const KeyEquivalent&) const = default;
};

enum class FontWeight { regular, semibold };
enum class TitleColor { label, secondaryLabel };

/// A small picture that stands in a line of text: a filled circle in the system's green.
struct GreenDot {
    int width = 8;  ///< in points
    int height = 8;

    bool operator==(const GreenDot&) const = default;
};

/// How a title is shown when it is not shown plainly.
struct StyledTitle {
    QString text;  ///< what stands before the dot, its blanks included
    std::optional<double> pointSize;
    FontWeight weight = FontWeight::regular;
    TitleColor color = TitleColor::label;
    std::optional<GreenDot> dot;

    bool operator==(const StyledTitle&) const = default;
};

struct MenuItem {
    QString title;
    MenuAction action = MenuAction::none;
    bool isEnabled = true;
    bool isSeparator = false;
    std::optional<KeyEquivalent> keyEquivalent;
    std::optional<StyledTitle> styledTitle;
    std::optional<AppConfiguration> representedObject;  ///< the app that the item stands for

    bool operator==(const MenuItem&) const = default;
};

using MenuItems = std::vector<MenuItem>;

}  // namespace wrapio
