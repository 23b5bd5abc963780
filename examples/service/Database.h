#pragma once

#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace zelvora::examples {

/// One prepared statement; made by Database and not to outlive it.
class Statement {
public:
    explicit Statement(sqlite3_stmt* statement);

    Statement& bind(int position, std::string_view text);
    Statement& bind(int position, std::int64_t number);

    /// Goes to the next row; false at the end and on failure.
    bool nextRow();
    /// Runs a statement that yields no rows, and makes it ready to run again.
    bool run();

    std::string text(int column) const;
    std::int64_t integer(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

/// The service's SQLite file. Not guarded: whoever shares one between threads takes turns.
class Database {
public:
    /// Opens or makes the file; on failure the text says why.
    static std::expected<Database, std::string> open(std::filesystem::path const& file);

    bool execute(char const* sql);
    Statement prepare(std::string_view sql);
    std::int64_t lastInsertedRow() const;
    std::string lastError() const;

private:
    struct Close {
        void operator()(sqlite3* database) const;
    };
    explicit Database(sqlite3* database);

    std::unique_ptr<sqlite3, Close> m_database;
};

} // namespace zelvora::examples
