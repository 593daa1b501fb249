#include "BrowserSessions/CookieImport.h"

#include "BrowserSessions/ChromiumCrypt.h"
#include "BrowserSessions/CookieDatabase.h"
#include "RunnerCore/HostName.h"

namespace wrapio {

namespace {

constexpr std::size_t mostCookies = 3000;
constexpr std::int64_t yearThreeThousand = 32'503'680'000;
constexpr std::int64_t secondsFrom1601To1970 = 11'644'473'600;
constexpr int versionWithHostDigest = 24;
constexpr std::size_t digestSize = 32;

/// Newer versions of Firefox count milliseconds.
std::int64_t firefoxTime(std::int64_t time) {
    return time > yearThreeThousand ? time / 1000 : time;
}

SameSite firefoxSameSite(std::int64_t value) {
    return value == 2 ? SameSite::Strict : value == 1 ? SameSite::Lax : value == 0 ? SameSite::None : SameSite::Unset;
}

SameSite chromiumSameSite(std::int64_t value) {
    return value == 2 ? SameSite::Strict : value == 1 ? SameSite::Lax : value == 0 ? SameSite::None : SameSite::Unset;
}

/// Microseconds since 1601; 0 for a cookie of the session.
std::int64_t chromiumTime(std::int64_t time) {
    return time <= 0 ? 0 : time / 1'000'000 - secondsFrom1601To1970;
}

class Collector {
public:
    explicit Collector(const ImportOptions& options)
        : m_options(options) {}

    [[nodiscard]] bool wants(const std::string& domain, std::int64_t expires) const {
        const bool isOver = expires != 0 && expires <= m_options.now;
        return !isOver && result.cookies.size() < mostCookies && cookieBelongsTo(domain, m_options.site);
    }

    ImportedCookies result;

private:
    const ImportOptions& m_options;
};

tl::expected<ImportedCookies, ImportError> importFirefox(const CookieDatabase& database, const ImportOptions& options) {
    Collector collector(options);
    // Cookies of containers and private windows belong to other sessions than the usual one.
    constexpr const char* query = "SELECT host, path, name, value, expiry, isSecure, isHttpOnly, sameSite "
                                  "FROM moz_cookies WHERE originAttributes = ''";
    const auto done = database.read(query, [&collector](const CookieRow& row) {
        StoredCookie cookie{row.text(0),
                            row.text(1),
                            row.text(2),
                            row.text(3),
                            firefoxTime(row.number(4)),
                            row.number(5) != 0,
                            row.number(6) != 0,
                            firefoxSameSite(row.number(7))};
        if (collector.wants(cookie.domain, cookie.expires))
            collector.result.cookies.push_back(std::move(cookie));
    });
    if (!done)
        return tl::unexpected(done.error());
    return std::move(collector.result);
}

/// Decrypts values with the keys that are known.
class ChromiumValues {
public:
    ChromiumValues(std::int64_t version, const std::optional<std::string>& keyringPassword)
        : m_hasHostDigest(version >= versionWithHostDigest)
        , m_fixedKey(chromiumKey(chromiumFixedPassword))
        , m_emptyKey(chromiumKey("")) {
        if (keyringPassword)
            m_keyringKey = chromiumKey(*keyringPassword);
    }

    [[nodiscard]] std::optional<std::string> decrypt(std::string_view encrypted, const std::string& host) const {
        const bool isFixed = encrypted.starts_with("v10");
        if (!isFixed && !encrypted.starts_with("v11"))
            return std::nullopt;
        encrypted.remove_prefix(3);
        const std::optional<ChromiumKey> key = isFixed ? m_fixedKey : m_keyringKey;
        auto text = key ? decryptChromium(encrypted, *key) : std::nullopt;
        // Some versions used an empty password by mistake.
        if (!text || !isOf(host, *text))
            text = decryptChromium(encrypted, m_emptyKey);
        if (!text || !isOf(host, *text))
            return std::nullopt;
        return m_hasHostDigest ? text->substr(digestSize) : *text;
    }

private:
    [[nodiscard]] bool isOf(const std::string& host, const std::string& text) const {
        return !m_hasHostDigest || text.starts_with(sha256(host));
    }

    bool m_hasHostDigest;
    ChromiumKey m_fixedKey;
    ChromiumKey m_emptyKey;
    std::optional<ChromiumKey> m_keyringKey;
};

tl::expected<ImportedCookies, ImportError> importChromium(const CookieDatabase& database,
                                                          const ImportOptions& options) {
    std::int64_t version = 0;
    const auto known = database.read("SELECT value FROM meta WHERE key = 'version'",
                                     [&version](const CookieRow& row) { version = row.number(0); });
    if (!known)
        return tl::unexpected(known.error());
    Collector collector(options);
    const ChromiumValues values(version, options.keyringPassword);
    constexpr const char* query = "SELECT host_key, path, name, value, encrypted_value, expires_utc, is_secure, "
                                  "is_httponly, samesite FROM cookies";
    const auto done = database.read(query, [&collector, &values](const CookieRow& row) {
        StoredCookie cookie{row.text(0),
                            row.text(1),
                            row.text(2),
                            row.text(3),
                            chromiumTime(row.number(5)),
                            row.number(6) != 0,
                            row.number(7) != 0,
                            chromiumSameSite(row.number(8))};
        if (!collector.wants(cookie.domain, cookie.expires))
            return;
        if (const std::string encrypted = row.text(4); !encrypted.empty()) {
            const auto value = values.decrypt(encrypted, cookie.domain);
            if (!value) {
                ++collector.result.unreadable;
                return;
            }
            cookie.value = *value;
        }
        collector.result.cookies.push_back(std::move(cookie));
    });
    if (!done)
        return tl::unexpected(done.error());
    if (collector.result.cookies.empty() && collector.result.unreadable > 0)
        return tl::unexpected<ImportError>(KeyMissing{});
    return std::move(collector.result);
}

}  // namespace

tl::expected<ImportedCookies, ImportError> importCookies(const CookieSource& source, const ImportOptions& options) {
    const auto database = CookieDatabase::openCopy(source.database, options.scratch);
    if (!database)
        return tl::unexpected(database.error());
    return source.kind == BrowserKind::Firefox ? importFirefox(*database, options) : importChromium(*database, options);
}

}  // namespace wrapio
