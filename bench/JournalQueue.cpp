#include "bench/JournalQueue.h"

#include "bench/makeEvent.h"
#include "bench/reportJournalError.h"

#include <string>
#include <utility>

namespace zelvora::bench {

namespace {

// As long as the key of a real queue.
constexpr char const* key = "ZelvoraSDK_Storage_com.example.host_tracking_event";

}

JournalQueue::JournalQueue(std::filesystem::path const& file)
    : m_file(file)
    , m_preferences(file, &reportJournalError)
    , m_event(makeEvent(12345))
{
}

std::size_t JournalQueue::bytesOfAppending()
{
    m_preferences.synchronize();
    auto const before = std::filesystem::file_size(m_file);
    append();
    return std::filesystem::file_size(m_file) - before;
}

void JournalQueue::fill(std::size_t count)
{
    for (std::size_t number = 0; number < count; ++number)
        write(read().appending(makeEvent(number)));
}

void JournalQueue::append()
{
    write(read().appending(m_event));
}

void JournalQueue::dropFirst(std::size_t count)
{
    write(read().droppingFirst(count));
}

std::vector<platform::Value> JournalQueue::first(std::size_t count)
{
    auto const events = read().prefix(count);
    return { events.begin(), events.end() };
}

platform::Array JournalQueue::read()
{
    auto const events = m_preferences.object(key);
    return events ? *events->array() : platform::Array();
}

void JournalQueue::write(platform::Array events)
{
    m_preferences.setObject(std::move(events), key);
}

}
