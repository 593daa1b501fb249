// The windows that pages have opened.
#pragma once

#include "Shell/DefaultPrograms.h"
#include "Shell/PopupWindow.h"
#include "Shell/WebContent.h"

#include <functional>
#include <list>
#include <memory>

namespace wrapio {

/// Lives on the main thread, no longer than the app's window.
class Popups {
public:
    using ViewHandler = std::function<void(WebKitWebView* view)>;

    /// `onView` is told of each new view, to attach what all views of the app share.
    Popups(GtkWindow* const& parent, const WebContent& content, DefaultPrograms& programs, bool isDevMode,
           ViewHandler onView);

    /// A view in a window of its own for a page of `opener`, which follows `policy`; null when there are too many.
    [[nodiscard]] WebKitWebView* open(WebKitWebView* opener, const NavigationPolicy& policy);

private:
    GtkWindow* const& m_parent;
    const WebContent& m_content;
    DefaultPrograms& m_programs;
    bool m_isDevMode;
    ViewHandler m_onView;
    std::list<std::unique_ptr<PopupWindow>> m_windows;
};

}  // namespace wrapio
