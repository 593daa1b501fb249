// Decides which addresses an app shows itself and which it leaves to the default browser.
//
// The engine does not say whether a navigation is for the main frame before its response arrives, so links are judged
// when they are followed and main frames once more when they answer. Frames of other hosts inside a page stay.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wrapio {

enum class Verdict {
    Inside,   ///< shown by the app
    HandOff,  ///< left to the default program of its scheme
    Refuse,   ///< neither
};

/// What made the engine ask.
struct NavigationCause {
    bool isLink = false;        ///< a link was followed
    bool isDeliberate = false;  ///< a click or a key of the person set it off
};

/// A value; used on the main thread.
class NavigationPolicy {
public:
    /// `siteHost` and `allowedHosts` are lower-cased and in the form that the engine uses (ASCII).
    NavigationPolicy(std::string siteHost, std::vector<std::string> allowedHosts, bool isDevMode);

    /// For a navigation of any frame that is about to start.
    [[nodiscard]] Verdict decideNavigation(std::string_view address, NavigationCause cause) const;

    /// For the answer to a navigation of the main frame.
    [[nodiscard]] Verdict decideMainResponse(std::string_view address) const;

    /// For a page's wish to open a new window.
    [[nodiscard]] Verdict decideNewWindow(std::string_view address, NavigationCause cause) const;

    /// True when a script may open a window of its own at `address`, which may be empty at first.
    [[nodiscard]] bool mayOpenWindow(std::string_view address, NavigationCause cause) const;

    /// True when what `address` answers may be saved. Files often come from other hosts than pages.
    [[nodiscard]] bool mayDownload(std::string_view address) const;

    /// For an address that came from outside: the command line or the desktop.
    [[nodiscard]] Verdict decideRequest(std::string_view address) const;

    /// Makes the host of `address` the site's own too: the start address may redirect to where the site now lives.
    void adopt(std::string_view address);

    /// The same policy, but with every site's pages inside: for windows that sign in through other sites.
    [[nodiscard]] NavigationPolicy forEverySite() const;

private:
    [[nodiscard]] bool belongs(std::string_view host) const;
    [[nodiscard]] Verdict decideWebAddress(std::string_view address) const;

    std::vector<std::string> m_siteHosts;
    std::vector<std::string> m_allowedHosts;
    bool m_isDevMode;
    bool m_isForEverySite = false;
};

}  // namespace wrapio
