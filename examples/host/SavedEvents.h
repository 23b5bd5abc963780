#pragma once

#include "examples/host/RemoteService.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zelvora::examples {

/// The events that pages saved, each with an id of its own, and what became of them.
class SavedEvents final {
public:
    struct Arrivals {
        std::vector<std::string> missing;
        /// How many arrived more than once.
        std::size_t repeated = 0;
    };

    void add(std::string eventId) { m_ids.push_back(std::move(eventId)); }
    [[nodiscard]] std::size_t size() const { return m_ids.size(); }
    /// Looks for each of them in what the service collected.
    [[nodiscard]] Arrivals arrivals(RemoteService& service) const;

    /// Whether an event with this id is in the SDK's queue.
    [[nodiscard]] static bool isQueued(std::string const& eventId);
    [[nodiscard]] static std::size_t queued();

private:
    std::vector<std::string> m_ids;
};

}
