#pragma once

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <vector>

namespace zelvora::tests {

/// What happened, in its order, written and read on any thread.
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
    [[nodiscard]] std::size_t size() const { return all().size(); }
    [[nodiscard]] bool holds(Event const& event) const
    {
        auto const events = all();
        return std::ranges::find(events, event) != events.end();
    }

private:
    std::mutex mutable m_mutex;
    std::vector<Event> m_events;
};

}
