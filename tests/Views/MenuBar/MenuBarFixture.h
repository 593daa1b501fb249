// A menu bar controller on fakes.
#pragma once

#include "Fakes/FakeMenuBarMenu.h"
#include "Fakes/FakeModifierKeys.h"
#include "Fakes/FakeThisApplication.h"
#include "PreviewFixture.h"
#include "Views/MenuBarController.h"

namespace wrapio {

class MenuBarFixture : public PreviewFixture {
protected:
    MenuBarFixture() { makeController(); }

    void makeController() {
        controller = std::make_unique<MenuBarController>(
            MenuBarServices{*store, *lifecycle, workspace, *preview, keys, application, scheduler}, menu);
    }
    /// The lines of what `action` does.
    template <typename Action>
    static QStringList linesOf(Action action) {
        DiagnosticsCapture output;
        action();
        return output.lines();
    }
    /// The name of the app that is previewed; empty when none is visible.
    [[nodiscard]] QString previewed() const {
        const auto& config = preview->currentConfig().value();
        return preview->isVisible() && config ? config->displayName() : QString();
    }

    FakeMenuBarMenu menu;
    FakeModifierKeys keys;
    FakeThisApplication application;
    std::unique_ptr<MenuBarController> controller;
};

}  // namespace wrapio
