#include "examples/service/CollectorStore.h"

#include <cstddef>
#include <utility>

namespace zelvora::examples {

namespace {

constexpr auto s_schema = R"sql(
    CREATE TABLE IF NOT EXISTS batches (
        number INTEGER PRIMARY KEY AUTOINCREMENT,
        received_at TEXT NOT NULL DEFAULT (strftime('%Y-%m-%dT%H:%M:%fZ', 'now')),
        profile TEXT NOT NULL
    );
    CREATE TABLE IF NOT EXISTS events (
        batch INTEGER NOT NULL REFERENCES batches (number),
        position INTEGER NOT NULL,
        json TEXT NOT NULL,
        PRIMARY KEY (batch, position)
    ) WITHOUT ROWID;
)sql";

} // namespace

std::expected<CollectorStore, std::string> CollectorStore::open(std::filesystem::path const& file)
{
    auto database = Database::open(file);
    if (!database)
        return std::unexpected(database.error());
    if (!database->execute(s_schema))
        return std::unexpected("cannot prepare " + file.string() + ": " + database->lastError());
    return CollectorStore(std::move(*database));
}

CollectorStore::CollectorStore(Database database) : m_database(std::move(database)) { }

bool CollectorStore::add(std::string_view profile, std::vector<std::string> const& events)
{
    std::scoped_lock const lock(*m_mutex);
    if (!m_database.execute("BEGIN IMMEDIATE"))
        return false;
    if (insert(profile, events) && m_database.execute("COMMIT"))
        return true;
    m_database.execute("ROLLBACK");
    return false;
}

bool CollectorStore::insert(std::string_view profile, std::vector<std::string> const& events)
{
    if (!m_database.prepare("INSERT INTO batches (profile) VALUES (?1)").bind(1, profile).run())
        return false;
    auto const batch = m_database.lastInsertedRow();
    auto statement = m_database.prepare("INSERT INTO events (batch, position, json) VALUES (?1, ?2, ?3)");
    for (std::size_t i = 0; i < events.size(); ++i) {
        if (!statement.bind(1, batch).bind(2, static_cast<std::int64_t>(i)).bind(3, events[i]).run())
            return false;
    }
    return true;
}

bool CollectorStore::clear()
{
    std::scoped_lock const lock(*m_mutex);
    return m_database.execute("BEGIN IMMEDIATE; DELETE FROM events; DELETE FROM batches; COMMIT");
}

std::vector<CollectedBatch> CollectorStore::batches() const
{
    std::scoped_lock const lock(*m_mutex);
    std::vector<CollectedBatch> batches;
    auto rows = m_database.prepare("SELECT number, received_at, profile FROM batches ORDER BY number");
    while (rows.nextRow())
        batches.push_back({ .number = rows.integer(0), .receivedAt = rows.text(1), .profile = rows.text(2) });

    for (auto& batch : batches) {
        auto events = m_database.prepare("SELECT json FROM events WHERE batch = ?1 ORDER BY position");
        events.bind(1, batch.number);
        while (events.nextRow())
            batch.events.push_back(events.text(0));
    }
    return batches;
}

} // namespace zelvora::examples
