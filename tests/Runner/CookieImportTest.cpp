#include "BrowserSessions/CookieImport.h"

#include "BrowserSessions/ChromiumCrypt.h"
#include "Runner/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nettle/aes.h>
#include <nettle/cbc.h>
#include <sqlite3.h>

#include <fstream>

namespace wrapio {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr std::int64_t now = 1'700'000'000;
constexpr std::int64_t later = now + 1000;

/// A database of a browser, written as that would.
class Database {
public:
    explicit Database(const fs::path& path) {
        fs::create_directories(path.parent_path());
        EXPECT_EQ(sqlite3_open(path.c_str(), &m_database), SQLITE_OK);
    }
    ~Database() { sqlite3_close(m_database); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void run(const std::string& statement) {
        char* problem = nullptr;
        EXPECT_EQ(sqlite3_exec(m_database, statement.c_str(), nullptr, nullptr, &problem), SQLITE_OK)
            << statement << ": " << (problem != nullptr ? problem : "");
        sqlite3_free(problem);
    }

private:
    sqlite3* m_database = nullptr;
};

std::string hexOf(const std::string& bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string hex;
    for (const char c : bytes) {
        hex += digits[static_cast<unsigned char>(c) >> 4];
        hex += digits[static_cast<unsigned char>(c) & 15];
    }
    return hex;
}

std::string encrypted(std::string text, const std::string& scheme, std::string_view password) {
    const std::size_t padding = AES_BLOCK_SIZE - text.size() % AES_BLOCK_SIZE;
    text.append(padding, static_cast<char>(padding));
    aes128_ctx context{};
    aes128_set_encrypt_key(&context, chromiumKey(password).data());
    std::array<std::uint8_t, AES_BLOCK_SIZE> vector{};
    vector.fill(' ');
    std::string out(text.size(), '\0');
    cbc_encrypt(&context, reinterpret_cast<nettle_cipher_func*>(aes128_encrypt), AES_BLOCK_SIZE, vector.data(),
                text.size(), reinterpret_cast<std::uint8_t*>(out.data()),
                reinterpret_cast<const std::uint8_t*>(text.data()));
    return scheme + out;
}

class CookieImport : public ::testing::Test {
protected:
    test::TemporaryFolder folder;
    fs::path scratch = folder.path() / "scratch";
    ImportOptions options{"example.com", scratch, std::nullopt, now};

    void SetUp() override { fs::create_directories(scratch); }
    void TearDown() override { EXPECT_TRUE(fs::is_empty(scratch)) << "a copy was left behind"; }

    CookieSource firefox() { return {BrowserKind::Firefox, "Firefox", folder.path() / "f/cookies.sqlite", ""}; }
    CookieSource chromium() { return {BrowserKind::Chromium, "Chromium", folder.path() / "c/Cookies", "chromium"}; }

    void makeFirefox(Database& database) {
        database.run("CREATE TABLE moz_cookies (id INTEGER PRIMARY KEY, originAttributes TEXT NOT NULL DEFAULT '', "
                     "name TEXT, value TEXT, host TEXT, path TEXT, expiry INTEGER, isSecure INTEGER, "
                     "isHttpOnly INTEGER, sameSite INTEGER DEFAULT 0)");
    }
    void addFirefox(Database& database, const std::string& host, const std::string& name, std::int64_t expiry = later,
                    const std::string& attributes = "") {
        database.run(
            "INSERT INTO moz_cookies (originAttributes, name, value, host, path, expiry, isSecure, isHttpOnly, "
            "sameSite) VALUES ('" +
            attributes + "', '" + name + "', 'value', '" + host + "', '/', " + std::to_string(expiry) + ", 1, 1, 1)");
    }

    void makeChromium(Database& database, int version) {
        database.run("CREATE TABLE meta (key TEXT, value TEXT)");
        database.run("INSERT INTO meta VALUES ('version', '" + std::to_string(version) + "')");
        database.run("CREATE TABLE cookies (host_key TEXT, path TEXT, name TEXT, value TEXT, encrypted_value BLOB, "
                     "expires_utc INTEGER, is_secure INTEGER, is_httponly INTEGER, samesite INTEGER)");
    }
    void addChromium(Database& database, const std::string& host, const std::string& name, const std::string& secret) {
        const std::int64_t expires = (later + 11'644'473'600) * 1'000'000;
        database.run("INSERT INTO cookies VALUES ('" + host + "', '/', '" + name + "', '', X'" + hexOf(secret) + "', " +
                     std::to_string(expires) + ", 1, 0, 2)");
    }

    std::vector<std::string> namesOf(const tl::expected<ImportedCookies, ImportError>& imported) {
        std::vector<std::string> names;
        if (imported) {
            for (const StoredCookie& cookie : imported->cookies)
                names.push_back(cookie.name + "=" + cookie.value);
        }
        return names;
    }
};

TEST_F(CookieImport, TakesTheCookiesOfTheSiteAndOfNoOtherFromFirefox) {
    Database database(firefox().database);
    makeFirefox(database);
    for (const char* host : {"example.com", ".example.com", "mail.example.com", "evilexample.com",
                             "example.com.evil.net", "com", ".com", "other.com"})
        addFirefox(database, host, host);
    const auto imported = importCookies(firefox(), options);
    EXPECT_THAT(namesOf(imported), ElementsAre("example.com=value", ".example.com=value", "mail.example.com=value"));
    EXPECT_EQ(imported->cookies.front(),
              (StoredCookie{"example.com", "/", "example.com", "value", later, true, true, SameSite::Lax}));
}

TEST_F(CookieImport, LeavesWhatHasEndedAndWhatBelongsToAContainer) {
    Database database(firefox().database);
    makeFirefox(database);
    addFirefox(database, "example.com", "over", now - 1);
    addFirefox(database, "example.com", "container", later, "^userContextId=1");
    addFirefox(database, "example.com", "milliseconds", later * 1000);
    const auto imported = importCookies(firefox(), options);
    EXPECT_THAT(namesOf(imported), ElementsAre("milliseconds=value"));
    EXPECT_EQ(imported->cookies.front().expires, later);
}

TEST_F(CookieImport, ReadsWhileTheBrowserWritesAndHoldsItsLock) {
    Database database(firefox().database);
    database.run("PRAGMA journal_mode=WAL");
    makeFirefox(database);
    addFirefox(database, "example.com", "early");
    database.run("PRAGMA wal_autocheckpoint=0");
    addFirefox(database, "example.com", "only-in-the-log");
    database.run("BEGIN EXCLUSIVE");
    EXPECT_THAT(namesOf(importCookies(firefox(), options)), ElementsAre("early=value", "only-in-the-log=value"));
    database.run("COMMIT");
}

TEST_F(CookieImport, DecryptsBothSchemesOfChromium) {
    Database database(chromium().database);
    makeChromium(database, 20);
    addChromium(database, "example.com", "fixed", encrypted("one", "v10", "peanuts"));
    addChromium(database, ".example.com", "keyring", encrypted("two", "v11", "from the keyring"));
    addChromium(database, "other.com", "foreign", encrypted("three", "v10", "peanuts"));
    options.keyringPassword = "from the keyring";
    const auto imported = importCookies(chromium(), options);
    EXPECT_THAT(namesOf(imported), ElementsAre("fixed=one", "keyring=two"));
    EXPECT_EQ(imported->cookies.front().expires, later);
    EXPECT_EQ(imported->cookies.front().sameSite, SameSite::Strict);
}

TEST_F(CookieImport, TakesTheHostOffTheValuesOfNewerVersionsAndChecksIt) {
    Database database(chromium().database);
    makeChromium(database, 24);
    addChromium(database, "example.com", "good", encrypted(sha256("example.com") + "one", "v10", "peanuts"));
    addChromium(database, "example.com", "moved", encrypted(sha256("other.com") + "two", "v10", "peanuts"));
    const auto imported = importCookies(chromium(), options);
    EXPECT_THAT(namesOf(imported), ElementsAre("good=one"));
    EXPECT_EQ(imported->unreadable, 1U);
}

TEST_F(CookieImport, SaysThatTheKeyIsMissing) {
    Database database(chromium().database);
    makeChromium(database, 20);
    addChromium(database, "example.com", "keyring", encrypted("two", "v11", "from the keyring"));
    const auto imported = importCookies(chromium(), options);
    ASSERT_FALSE(imported);
    EXPECT_TRUE(std::holds_alternative<KeyMissing>(imported.error()));
    EXPECT_THAT(messageFor(imported.error(), "Chromium").title, HasSubstr("locked away"));
}

TEST_F(CookieImport, SaysThatAWrongKeyDoesNotFit) {
    Database database(chromium().database);
    makeChromium(database, 24);
    addChromium(database, "example.com", "a", encrypted(sha256("example.com") + "x", "v11", "right"));
    options.keyringPassword = "wrong";
    EXPECT_FALSE(importCookies(chromium(), options));
}

TEST_F(CookieImport, SaysThatTheSourceIsMissing) {
    const auto imported = importCookies(firefox(), options);
    ASSERT_FALSE(imported);
    EXPECT_TRUE(std::holds_alternative<SourceMissing>(imported.error()));
    EXPECT_THAT(messageFor(imported.error(), "Firefox").body, HasSubstr("no cookies"));
}

TEST_F(CookieImport, SaysThatADamagedSourceCannotBeRead) {
    fs::create_directories(firefox().database.parent_path());
    std::ofstream(firefox().database) << std::string(5000, 'x');
    const auto imported = importCookies(firefox(), options);
    ASSERT_FALSE(imported);
    EXPECT_TRUE(std::holds_alternative<SourceDamaged>(imported.error()));
    EXPECT_THAT(messageFor(imported.error(), "Firefox").body, HasSubstr("way that this app does not know"));
}

TEST_F(CookieImport, SaysThatAnUnknownTableCannotBeRead) {
    { Database(chromium().database).run("CREATE TABLE cookies (x)"); }
    const auto imported = importCookies(chromium(), options);
    ASSERT_FALSE(imported);
    EXPECT_TRUE(std::holds_alternative<SourceDamaged>(imported.error()));
}

TEST_F(CookieImport, SaysThatASourceIsLocked) {
    fs::create_directories(firefox().database);
    const auto imported = importCookies(firefox(), options);
    ASSERT_FALSE(imported);
    EXPECT_TRUE(std::holds_alternative<SourceLocked>(imported.error()));
    EXPECT_THAT(messageFor(imported.error(), "Firefox").body, HasSubstr("Close Firefox and try again"));
}

TEST(ChromiumCrypt, RefusesWhatIsNoWholeBlock) {
    const ChromiumKey key = chromiumKey(chromiumFixedPassword);
    for (const char* text : {"", "x", "0123456789abcdef0", "0123456789abcdef"})
        EXPECT_EQ(decryptChromium(text, key), std::nullopt) << text;
}

TEST(CookieSource, FindsTheProfilesOfAllBrowsersWithTheUsualOnesFirst) {
    const test::TemporaryFolder folder;
    const fs::path config = folder.path() / ".config";
    for (const fs::path& path :
         {folder.path() / ".mozilla/firefox/abc.work/cookies.sqlite",
          folder.path() / ".mozilla/firefox/xyz.default-release/cookies.sqlite", config / "chromium/Default/Cookies",
          config / "chromium/Profile 1/Network/Cookies", config / "chromium/Crash Reports/other"}) {
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "";
    }
    std::vector<std::string> names;
    for (const CookieSource& source : findCookieSources(folder.path(), config))
        names.push_back(source.name);
    EXPECT_THAT(names, ElementsAre("Firefox", "Chromium", "Firefox (abc.work)", "Chromium (Profile 1)"));
}

TEST(CookieSource, IsChosenByPartOfItsNameInAnyCase) {
    const std::vector<CookieSource> sources{{BrowserKind::Firefox, "Firefox", "/f", ""},
                                            {BrowserKind::Chromium, "Chromium", "/c", "chromium"}};
    EXPECT_EQ(matchingSources(sources, "fireFOX").size(), 1U);
    EXPECT_EQ(matchingSources(sources, "").size(), 2U);
    EXPECT_TRUE(matchingSources(sources, "Netscape").empty());
    EXPECT_TRUE(findCookieSources("/nonexistent", "/nonexistent").empty());
}

}  // namespace
}  // namespace wrapio
