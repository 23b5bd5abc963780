#include "examples/service/Database.h"

#include <sqlite3.h>

namespace zelvora::examples {

Statement::Statement(sqlite3_stmt* statement) : m_statement(statement) { }

void Statement::Finalize::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

Statement& Statement::bind(int position, std::string_view text)
{
    sqlite3_bind_text64(m_statement.get(), position, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    return *this;
}

Statement& Statement::bind(int position, std::int64_t number)
{
    sqlite3_bind_int64(m_statement.get(), position, number);
    return *this;
}

bool Statement::nextRow()
{
    return m_statement && sqlite3_step(m_statement.get()) == SQLITE_ROW;
}

bool Statement::run()
{
    if (!m_statement)
        return false;
    auto const outcome = sqlite3_step(m_statement.get());
    sqlite3_reset(m_statement.get());
    return outcome == SQLITE_DONE;
}

std::string Statement::text(int column) const
{
    auto const* start = static_cast<char const*>(sqlite3_column_blob(m_statement.get(), column));
    return { start, static_cast<std::size_t>(sqlite3_column_bytes(m_statement.get(), column)) };
}

std::int64_t Statement::integer(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

Database::Database(sqlite3* database) : m_database(database) { }

void Database::Close::operator()(sqlite3* database) const
{
    sqlite3_close_v2(database);
}

std::expected<Database, std::string> Database::open(std::filesystem::path const& file)
{
    sqlite3* raw = nullptr;
    auto const outcome = sqlite3_open(file.c_str(), &raw);
    Database database(raw);
    if (outcome != SQLITE_OK)
        return std::unexpected("cannot open " + file.string() + ": " + database.lastError());

    sqlite3_busy_timeout(raw, 5000);
    if (!database.execute("PRAGMA journal_mode = WAL") || !database.execute("PRAGMA foreign_keys = ON"))
        return std::unexpected("cannot use " + file.string() + ": " + database.lastError());
    return database;
}

bool Database::execute(char const* sql)
{
    return sqlite3_exec(m_database.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

Statement Database::prepare(std::string_view sql)
{
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(m_database.get(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
    return Statement(statement);
}

std::int64_t Database::lastInsertedRow() const
{
    return sqlite3_last_insert_rowid(m_database.get());
}

std::string Database::lastError() const
{
    return sqlite3_errmsg(m_database.get());
}

} // namespace zelvora::examples
