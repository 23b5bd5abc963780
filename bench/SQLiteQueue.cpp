#include "bench/SQLiteQueue.h"

#include "bench/jsonText.h"
#include "bench/makeEvent.h"

#include <utility>

namespace zelvora::bench {

SQLiteQueue::SQLiteQueue(std::filesystem::path const& file) : m_store(file), m_event(toText(makeEvent(12345))) { }

void SQLiteQueue::fill(std::size_t count)
{
    // The rows are the same as if each had its own transaction.
    m_store.inOneTransaction([&] {
        for (std::size_t number = 0; number < count; ++number)
            m_store.append(toText(makeEvent(number)));
    });
}

std::vector<platform::Value> SQLiteQueue::first(std::size_t count)
{
    std::vector<platform::Value> events;
    for (auto& text : m_store.first(count))
        events.push_back(fromText(std::move(text)));
    return events;
}

}
