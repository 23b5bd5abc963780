#pragma once

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <utility>
#include <vector>

namespace zelvora::tests {

/// A list of what happened, in order. Any thread may add and read.
template<typename Event>
class Record final {
public:
    void add(Event event)
    {
        std::scoped_lock const lock(m_mutex);
        m_events.push_back(std::move(event));
    }
    [[nodiscard]] std::vector<Event> all() const
    {
        std::scoped_lock const lock(m_mutex);
        return m_events;
    }
    /// What was added since the last call.
    [[nodiscard]] std::vector<Event> takeNew()
    {
        std::scoped_lock const lock(m_mutex);
        auto const first = m_events.begin() + static_cast<std::ptrdiff_t>(std::exchange(m_taken, m_events.size()));
        return { first, m_events.end() };
    }
    [[nodiscard]] std::size_t size() const { return all().size(); }
    [[nodiscard]] bool contains(Event const& event) const
    {
        auto const events = all();
        return std::ranges::find(events, event) != events.end();
    }

private:
    std::mutex mutable m_mutex;
    std::vector<Event> m_events;
    std::size_t m_taken = 0;
};

}
