#include "examples/service/CollectorStore.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <algorithm>
#include <array>
#include <fstream>

namespace zelvora::examples {

namespace {

std::string now()
{
    std::unique_ptr<GDateTime, gtk::Releasing<g_date_time_unref>> const time(g_date_time_new_now_utc());
    return gtk::GTextPointer(g_date_time_format_iso8601(time.get())).get();
}

// A person may have edited the file.
bool isStoredBatch(Json const& line)
{
    static constexpr std::array members { "number", "receivedAt", "profile", "events" };
    auto const has = [&line](char const* member) { return line.contains(member); };
    return line.is_object() && std::ranges::all_of(members, has) && line.at("number").is_number_unsigned()
        && line.at("receivedAt").is_string() && isBatch(line.at("profile"), line.at("events"));
}

}

bool isBatch(Json const& profile, Json const& events)
{
    return (profile == "dev" || profile == "prd") && events.is_array()
        && std::ranges::all_of(events, [](Json const& event) { return event.is_object(); });
}

CollectorStore::CollectorStore(std::filesystem::path file) : m_file(std::move(file)) { }

std::expected<std::unique_ptr<CollectorStore>, std::string> CollectorStore::open(std::filesystem::path file)
{
    std::unique_ptr<CollectorStore> store(new CollectorStore(std::move(file)));
    if (!store->readLines())
        return std::unexpected("cannot use " + store->m_file.string());
    return store;
}

bool CollectorStore::readLines()
{
    std::fstream stream(m_file, std::ios::in | std::ios::out | std::ios::app | std::ios::binary);
    std::uintmax_t complete = 0;
    for (std::string line; std::getline(stream, line) && !stream.eof(); complete += line.size() + 1) {
        auto batch = parseJson(line);
        if (!batch || !isStoredBatch(*batch))
            return false;
        m_batches.push_back(*std::move(batch));
    }
    if (!stream.is_open() || stream.bad())
        return false;
    std::error_code failure;
    std::filesystem::resize_file(m_file, complete, failure);
    return !failure;
}

bool CollectorStore::add(std::string const& profile, Json const& events)
{
    std::scoped_lock const lock(m_mutex);
    Json batch = { { "number", m_batches.size() + 1 }, { "receivedAt", now() }, { "profile", profile },
        { "events", events } };
    std::error_code failure;
    auto const before = std::filesystem::file_size(m_file, failure);
    if (failure)
        return false;
    std::ofstream stream(m_file, std::ios::app | std::ios::binary);
    stream << batch.dump() << '\n';
    stream.close();
    if (!stream) {
        std::filesystem::resize_file(m_file, before, failure);
        return false;
    }
    m_batches.push_back(std::move(batch));
    return true;
}

bool CollectorStore::clear()
{
    std::scoped_lock const lock(m_mutex);
    std::error_code failure;
    std::filesystem::resize_file(m_file, 0, failure);
    if (!failure)
        m_batches.clear();
    return !failure;
}

Json CollectorStore::batches() const
{
    std::scoped_lock const lock(m_mutex);
    return m_batches;
}

}
