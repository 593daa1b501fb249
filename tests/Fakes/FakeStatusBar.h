// A bar whose items remember what they were told to show.
#pragma once

#include "Views/StatusItem.h"

#include <optional>

namespace wrapio {

class FakeStatusBar final : public StatusBar {
public:
    struct Shown {
        std::optional<StatusImage> image;
        MenuBarMenu* menu = nullptr;
        bool isVisible = false;
        double length = 0;
        QStringList messages;
    };

    std::unique_ptr<StatusItem> makeStatusItem(double length) override {
        ++items;
        shown.length = length;
        return std::make_unique<Item>(*this);
    }

    bool hasButtons = true;
    int items = 0;
    Shown shown;  ///< by the item that was made last

private:
    class Item final : public StatusItem {
    public:
        explicit Item(FakeStatusBar& bar)
            : m_bar(bar) {}
        bool hasButton() const override { return m_bar.hasButtons; }
        void setImage(const StatusImage& image) override { m_bar.shown.image = image; }
        void setMenu(MenuBarMenu& menu) override { m_bar.shown.menu = &menu; }
        void setVisible(bool isVisible) override { m_bar.shown.isVisible = isVisible; }
        void showMessage(const QString& title, const QString& text) override {
            m_bar.shown.messages << title + u'\n' + text;
        }

    private:
        FakeStatusBar& m_bar;
    };
};

}  // namespace wrapio
