// Messages and questions that lie above the page without stopping the person.
#pragma once

#include "Shell/Choice.h"

#include <gtk/gtk.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace wrapio {

/// A handle on widgets that the window owns; valid as long as that lives.
class BannerArea {
public:
    BannerArea();
    BannerArea(const BannerArea&) = delete;
    BannerArea& operator=(const BannerArea&) = delete;

    /// Shows `text` and a button for each of `choices`. A banner of the same `id` is replaced, as if it were closed.
    /// `onClosed` is told when it goes without a choice.
    void show(const std::string& id, const std::string& text, const std::vector<Choice>& choices,
              std::function<void()> onClosed = {});

    /// Takes the banner away, as if it were closed by hand; nothing when there is none.
    void close(const std::string& id);

    [[nodiscard]] GtkWidget* widget() const { return m_box; }

private:
    struct Banner {
        GtkWidget* widget;
        std::function<void()> onClosed;
    };

    std::function<void()> takeAway(const std::string& id);

    GtkWidget* m_box;
    std::map<std::string, Banner> m_banners;
};

}  // namespace wrapio
