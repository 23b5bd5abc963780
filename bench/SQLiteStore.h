#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace zelvora::bench {

/// The reference for the journal: preferences and an event queue in SQLite, in WAL mode with synchronous=NORMAL, one
/// transaction per change.
class SQLiteStore final {
public:
    explicit SQLiteStore(std::filesystem::path const& file);
    SQLiteStore(SQLiteStore const&) = delete;
    SQLiteStore& operator=(SQLiteStore const&) = delete;
    ~SQLiteStore();

    void set(std::string const& key, std::string const& value);
    void append(std::string const& event);
    /// Appends the event `count` times in one transaction.
    void append(std::string const& event, std::size_t count);

private:
    void execute(char const* sql);
    [[nodiscard]] sqlite3_stmt* prepare(char const* sql);
    static void run(sqlite3_stmt* statement);

    sqlite3* m_database = nullptr;
    sqlite3_stmt* m_set = nullptr;
    sqlite3_stmt* m_append = nullptr;
};

}
