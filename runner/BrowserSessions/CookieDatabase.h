// A browser's store of cookies, read from a copy: the browser may be running, and nothing of it is touched.
#pragma once

#include "BrowserSessions/ImportError.h"

#include <sqlite3.h>
#include <tl/expected.hpp>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace wrapio {

/// One row of an answer. Valid during the call that hands it out.
class CookieRow {
public:
    explicit CookieRow(sqlite3_stmt* statement)
        : m_statement(statement) {}

    /// The text, or the bytes, of `column`; empty for null.
    [[nodiscard]] std::string text(int column) const;
    [[nodiscard]] std::int64_t number(int column) const;

private:
    sqlite3_stmt* m_statement;
};

/// The copy is gone with the object, however that ends short of a power cut.
class CookieDatabase {
public:
    /// Copies the database at `path`, with what is written beside it, into a new private folder below `scratch`.
    [[nodiscard]] static tl::expected<CookieDatabase, ImportError> openCopy(const std::filesystem::path& path,
                                                                            const std::filesystem::path& scratch);

    /// Calls `take` with each row that `query` finds.
    [[nodiscard]] tl::expected<void, ImportError> read(const char* query,
                                                       const std::function<void(const CookieRow&)>& take) const;

private:
    struct RemoveFolder {
        void operator()(std::filesystem::path* folder) const;
    };
    struct CloseDatabase {
        void operator()(sqlite3* database) const { sqlite3_close(database); }
    };

    CookieDatabase() = default;

    // The database is closed before its folder goes.
    std::unique_ptr<std::filesystem::path, RemoveFolder> m_folder;
    std::unique_ptr<sqlite3, CloseDatabase> m_database;
};

}  // namespace wrapio
