#include "Shell/SessionImport.h"

#include "RunnerCore/DisplayText.h"
#include "Shell/Cookies.h"
#include "Shell/Keyring.h"
#include "Shell/MessageDialog.h"

#include <libsoup/soup.h>

namespace wrapio {

namespace {

constexpr std::size_t mostChoices = 4;
constexpr std::size_t longestName = 60;

/// The part of `host` that one owner has registered; sign-ins often live on a sister of the host itself.
std::string siteOf(const std::string& host) {
    const char* base = soup_tld_get_base_domain(host.c_str(), nullptr);
    return base != nullptr ? base : host;
}

std::string counted(std::size_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

}  // namespace

SessionImport::SessionImport(GtkWindow* window, WebKitNetworkSession* session, const RunnerConfig& config,
                             std::string scratch, std::function<void()> onImported)
    : m_window(window)
    , m_session(session)
    , m_appName(config.name)
    , m_site(siteOf(config.host))
    , m_scratch(std::move(scratch))
    , m_onImported(std::move(onImported)) {}

void SessionImport::say(const Message& message) {
    showMessageDialog(m_window, message);
}

void SessionImport::offer(const std::string& wanted) {
    const auto sources = matchingSources(findCookieSources(g_get_home_dir(), g_get_user_config_dir()), wanted);
    if (sources.empty()) {
        const std::string where = wanted.empty() ? "a browser" : "“" + displayText(wanted, longestName) + "”";
        return say({"No session of " + where + " was found on this computer",
                    "Sessions can be brought over from Firefox and Chromium. Sign in to " + m_appName +
                        " in this window instead; the app keeps you signed in."});
    }
    std::vector<Choice> choices{{"Cancel", {}}};
    for (const CookieSource& source : sources) {
        if (choices.size() <= mostChoices)
            choices.push_back({source.name, [this, source] { start(source); }});
    }
    showMessageDialog(m_window,
                      {"Bring your session for " + displayText(m_site, longestName) + " to this app?",
                       "The cookies of this site, and of no other, are read from the browser that you choose. The "
                       "browser stays as it is."},
                      choices);
}

void SessionImport::start(const CookieSource& source) {
    if (source.kind == BrowserKind::Firefox)
        return run(source, std::nullopt);
    const std::weak_ptr<bool> life = m_life;
    lookUpBrowserKey(source.keyOwner, [this, life, source](std::optional<std::string> password) {
        if (!life.expired())
            run(source, std::move(password));
    });
}

void SessionImport::run(const CookieSource& source, std::optional<std::string> password) {
    const auto imported =
        importCookies(source, {m_site, m_scratch, std::move(password), g_get_real_time() / G_USEC_PER_SEC});
    if (!imported)
        return say(messageFor(imported.error(), source.name));
    if (imported->cookies.empty())
        return say({"No session for " + displayText(m_site, longestName) + " was found in " + source.name,
                    "You may not be signed in there, or only until the browser is closed."});
    take(source, *imported);
}

void SessionImport::take(const CookieSource& source, const ImportedCookies& imported) {
    std::string body = counted(imported.cookies.size(), "cookie") + " of " + displayText(m_site, longestName) +
                       " came from " + source.name + ".";
    if (imported.unreadable > 0)
        body += " " + counted(imported.unreadable, "more cookie") + " could not be decrypted.";
    const std::weak_ptr<bool> life = m_life;
    addCookies(m_session, imported.cookies, [this, life, body] {
        if (life.expired())
            return;
        m_onImported();
        say({"Your session was brought over", body});
    });
}

}  // namespace wrapio
