#include "BrowserSessions/CookieDatabase.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace wrapio {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t largestDatabase = std::uintmax_t{256} * 1024 * 1024;

struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

ImportError problemOf(sqlite3* database) {
    const int code = sqlite3_errcode(database) & 0xFF;
    const std::string reason = sqlite3_errmsg(database);
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED || code == SQLITE_PERM)
        return SourceLocked{reason};
    return SourceDamaged{reason};
}

ImportError problemOf(const std::error_code& error) {
    if (error == std::errc::no_such_file_or_directory)
        return SourceMissing{};
    return SourceLocked{error.message()};
}

}  // namespace

std::string CookieRow::text(int column) const {
    const void* bytes = sqlite3_column_blob(m_statement, column);
    const int size = sqlite3_column_bytes(m_statement, column);
    return bytes != nullptr ? std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(size))
                            : std::string();
}

std::int64_t CookieRow::number(int column) const {
    return sqlite3_column_int64(m_statement, column);
}

void CookieDatabase::RemoveFolder::operator()(fs::path* folder) const {
    std::error_code ignored;
    fs::remove_all(*folder, ignored);
    delete folder;
}

tl::expected<CookieDatabase, ImportError> CookieDatabase::openCopy(const fs::path& path, const fs::path& scratch) {
    std::error_code failed;
    const std::uintmax_t size = fs::file_size(path, failed);
    if (failed)
        return tl::unexpected(problemOf(failed));
    if (size > largestDatabase)
        return tl::unexpected<ImportError>(SourceDamaged{"it is too large"});
    std::string name = (scratch / "import-XXXXXX").string();
    // Readable for nobody else from its first moment.
    if (::mkdtemp(name.data()) == nullptr)
        return tl::unexpected<ImportError>(SourceLocked{std::generic_category().message(errno)});
    CookieDatabase opened;
    opened.m_folder.reset(new fs::path(name));
    const fs::path copy = fs::path(name) / "cookies";
    fs::copy_file(path, copy, failed);
    if (failed)
        return tl::unexpected(problemOf(failed));
    // What a running browser has not yet moved into the database itself.
    std::error_code ignored;
    fs::copy_file(path.string() + "-wal", copy.string() + "-wal", ignored);
    sqlite3* database = nullptr;
    const int code = sqlite3_open_v2(copy.c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOFOLLOW, nullptr);
    opened.m_database.reset(database);
    if (code != SQLITE_OK)
        return tl::unexpected(problemOf(database));
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    return opened;
}

tl::expected<void, ImportError> CookieDatabase::read(const char* query,
                                                     const std::function<void(const CookieRow&)>& take) const {
    sqlite3_stmt* prepared = nullptr;
    const int code = sqlite3_prepare_v2(m_database.get(), query, -1, &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, FinalizeStatement> statement(prepared);
    if (code != SQLITE_OK)
        return tl::unexpected(problemOf(m_database.get()));
    int step = sqlite3_step(prepared);
    for (; step == SQLITE_ROW; step = sqlite3_step(prepared))
        take(CookieRow(prepared));
    if (step != SQLITE_DONE)
        return tl::unexpected(problemOf(m_database.get()));
    return {};
}

}  // namespace wrapio
