#include "bench/SQLiteStore.h"

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>

namespace zelvora::bench {

namespace {

void require(bool succeeded, sqlite3* database)
{
    if (succeeded)
        return;
    std::fprintf(stderr, "SQLite: %s\n", sqlite3_errmsg(database));
    std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe)
}

}

SQLiteStore::SQLiteStore(std::filesystem::path const& file)
{
    require(sqlite3_open(file.c_str(), &m_database) == SQLITE_OK, m_database);
    auto const* const schema =
        "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL;"
        "CREATE TABLE IF NOT EXISTS preferences (key TEXT PRIMARY KEY, value BLOB) WITHOUT ROWID;"
        "CREATE TABLE IF NOT EXISTS events (id INTEGER PRIMARY KEY, event BLOB);";
    execute(schema);
    m_set = prepare("INSERT OR REPLACE INTO preferences VALUES (?1, ?2)");
    m_append = prepare("INSERT INTO events (event) VALUES (?1)");
}

SQLiteStore::~SQLiteStore()
{
    for (auto* statement : { m_set, m_append })
        sqlite3_finalize(statement);
    sqlite3_close(m_database);
}

void SQLiteStore::execute(std::string const& sql)
{
    require(sqlite3_exec(m_database, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, m_database);
}

sqlite3_stmt* SQLiteStore::prepare(char const* sql)
{
    sqlite3_stmt* statement = nullptr;
    require(sqlite3_prepare_v2(m_database, sql, -1, &statement, nullptr) == SQLITE_OK, m_database);
    return statement;
}

void SQLiteStore::run(sqlite3_stmt* statement)
{
    require(sqlite3_step(statement) == SQLITE_DONE, sqlite3_db_handle(statement));
    sqlite3_reset(statement);
}

void SQLiteStore::set(std::string const& key, std::string const& value)
{
    sqlite3_bind_text(m_set, 1, key.data(), static_cast<int>(key.size()), SQLITE_STATIC);
    sqlite3_bind_blob(m_set, 2, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
    run(m_set);
}

void SQLiteStore::append(std::string const& event)
{
    sqlite3_bind_blob(m_append, 1, event.data(), static_cast<int>(event.size()), SQLITE_STATIC);
    run(m_append);
}

void SQLiteStore::dropFirst(std::size_t count)
{
    execute("DELETE FROM events WHERE id IN (SELECT id FROM events ORDER BY id LIMIT " + std::to_string(count) + ")");
}

std::size_t SQLiteStore::size()
{
    auto* const statement = prepare("SELECT count(*) FROM events");
    require(sqlite3_step(statement) == SQLITE_ROW, m_database);
    auto const size = static_cast<std::size_t>(sqlite3_column_int64(statement, 0));
    sqlite3_finalize(statement);
    return size;
}

std::vector<std::string> SQLiteStore::first(std::size_t count)
{
    auto* const statement = prepare("SELECT event FROM events ORDER BY id LIMIT ?1");
    sqlite3_bind_int64(statement, 1, static_cast<sqlite3_int64>(count));
    std::vector<std::string> events;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        auto const* const bytes = static_cast<char const*>(sqlite3_column_blob(statement, 0));
        events.emplace_back(bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement, 0)));
    }
    require(sqlite3_finalize(statement) == SQLITE_OK, m_database);
    return events;
}

void SQLiteStore::inOneTransaction(std::function<void()> const& work)
{
    execute("BEGIN");
    work();
    execute("COMMIT");
}

}
