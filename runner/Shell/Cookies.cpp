#include "Shell/Cookies.h"

#include "Shell/ProfileFile.h"

#include <libsoup/soup.h>

namespace wrapio {

namespace {

constexpr unsigned saveDelay = 1500;  // milliseconds
constexpr std::size_t largestFile = std::size_t{4} * 1024 * 1024;

struct FreeCookie {
    void operator()(SoupCookie* cookie) const { soup_cookie_free(cookie); }
};
using CookiePtr = std::unique_ptr<SoupCookie, FreeCookie>;

SoupSameSitePolicy policyOf(SameSite sameSite) {
    switch (sameSite) {
    case SameSite::Strict:
        return SOUP_SAME_SITE_POLICY_STRICT;
    case SameSite::Lax:
        return SOUP_SAME_SITE_POLICY_LAX;
    case SameSite::Unset:
    case SameSite::None:
        break;
    }
    return SOUP_SAME_SITE_POLICY_NONE;
}

SameSite sameSiteOf(SoupSameSitePolicy policy) {
    if (policy == SOUP_SAME_SITE_POLICY_STRICT)
        return SameSite::Strict;
    return policy == SOUP_SAME_SITE_POLICY_LAX ? SameSite::Lax : SameSite::None;
}

CookiePtr engineCookie(const StoredCookie& cookie) {
    CookiePtr made(soup_cookie_new(cookie.name.c_str(), cookie.value.c_str(), cookie.domain.c_str(),
                                   cookie.path.empty() ? "/" : cookie.path.c_str(), -1));
    if (cookie.expires > 0) {
        GDateTime* end = g_date_time_new_from_unix_utc(cookie.expires);
        if (end != nullptr) {
            soup_cookie_set_expires(made.get(), end);
            g_date_time_unref(end);
        }
    }
    soup_cookie_set_secure(made.get(), cookie.isSecure ? TRUE : FALSE);
    soup_cookie_set_http_only(made.get(), cookie.isHttpOnly ? TRUE : FALSE);
    soup_cookie_set_same_site_policy(made.get(), policyOf(cookie.sameSite));
    return made;
}

StoredCookie storedCookie(SoupCookie* cookie) {
    return {orEmpty(soup_cookie_get_domain(cookie)),
            orEmpty(soup_cookie_get_path(cookie)),
            orEmpty(soup_cookie_get_name(cookie)),
            orEmpty(soup_cookie_get_value(cookie)),
            0,
            soup_cookie_get_secure(cookie) != FALSE,
            soup_cookie_get_http_only(cookie) != FALSE,
            sameSiteOf(soup_cookie_get_same_site_policy(cookie))};
}

}  // namespace

void addCookies(WebKitNetworkSession* session, const std::vector<StoredCookie>& cookies, std::function<void()> finish) {
    if (cookies.empty())
        return finish();
    struct Adding {
        std::size_t left;
        std::function<void()> finish;
    };
    auto* adding = new Adding{cookies.size(), std::move(finish)};
    const auto added = [](GObject* manager, GAsyncResult* result, gpointer data) {
        webkit_cookie_manager_add_cookie_finish(WEBKIT_COOKIE_MANAGER(manager), result, nullptr);
        auto* counted = static_cast<Adding*>(data);
        if (--counted->left > 0)
            return;
        const std::unique_ptr<Adding> done(counted);
        done->finish();
    };
    WebKitCookieManager* manager = webkit_network_session_get_cookie_manager(session);
    for (const StoredCookie& cookie : cookies)
        webkit_cookie_manager_add_cookie(manager, engineCookie(cookie).get(), nullptr, added, adding);
}

struct SessionCookies::Saving {
    SessionCookies* owner;
    std::function<void()> finish;
};

SessionCookies::SessionCookies(WebKitNetworkSession* session, std::string path)
    : m_session(session)
    , m_manager(webkit_network_session_get_cookie_manager(session))
    , m_path(std::move(path)) {
    connect(
        m_manager, "changed",
        [](WebKitCookieManager*, SessionCookies* self) {
            if (!self->m_delay.isWaiting())
                self->m_delay.start(saveDelay, [self] { self->save([] {}); });
        },
        this);
}

SessionCookies::~SessionCookies() {
    g_cancellable_cancel(m_life.get());
    g_signal_handlers_disconnect_by_data(m_manager, this);
}

void SessionCookies::restore(std::function<void()> finish) {
    m_written = readProfileFile(m_path, largestFile);
    addCookies(m_session, parseCookies(m_written), std::move(finish));
}

void SessionCookies::save(std::function<void()> finish) {
    m_delay.cancel();
    webkit_cookie_manager_get_all_cookies(m_manager, m_life.get(), &SessionCookies::received,
                                          new Saving{this, std::move(finish)});
}

void SessionCookies::received(GObject* manager, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Saving> saving(static_cast<Saving*>(data));
    GError* error = nullptr;
    GList* all = webkit_cookie_manager_get_all_cookies_finish(WEBKIT_COOKIE_MANAGER(manager), result, &error);
    const bool isGivenUp = error != nullptr;
    g_clear_error(&error);
    if (isGivenUp)
        return;
    std::vector<StoredCookie> cookies;
    for (GList* each = all; each != nullptr; each = each->next) {
        if (soup_cookie_get_expires(static_cast<SoupCookie*>(each->data)) == nullptr)
            cookies.push_back(storedCookie(static_cast<SoupCookie*>(each->data)));
    }
    g_list_free_full(all, [](gpointer cookie) { soup_cookie_free(static_cast<SoupCookie*>(cookie)); });
    const std::string text = cookiesText(cookies);
    if (text != saving->owner->m_written)
        writeProfileFile(saving->owner->m_path, text);
    saving->owner->m_written = text;
    saving->finish();
}

void SessionCookies::clear() {
    m_written.clear();
    writeProfileFile(m_path, "");
}

}  // namespace wrapio
