#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

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
    void dropFirst(std::size_t count);
    /// How many events there are.
    [[nodiscard]] std::size_t size();
    /// The oldest events.
    [[nodiscard]] std::vector<std::string> first(std::size_t count);

    /// Makes one transaction of all changes that the work makes.
    void inOneTransaction(std::function<void()> const& work);

private:
    void execute(std::string const& sql);
    [[nodiscard]] sqlite3_stmt* prepare(char const* sql);
    static void run(sqlite3_stmt* statement);

    sqlite3* m_database = nullptr;
    sqlite3_stmt* m_set = nullptr;
    sqlite3_stmt* m_append = nullptr;
};

}
