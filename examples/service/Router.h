#pragma once

#include "examples/service/Faults.h"
#include "examples/service/Http.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvora::examples {

/// An answer, and how its delivery goes wrong.
struct Outcome {
    Reply reply;
    std::chrono::milliseconds delay { 0 };
    Cut cut = Cut::None;
};

/// Finds the endpoint of a host and lets the faults in force have their way with its answer.
class Router {
public:
    explicit Router(Faults& faults);

    /// A host that begins with a dot stands for every name with exactly one label in front of it.
    void add(std::string host, std::unique_ptr<Endpoint> endpoint, std::optional<Target> target = std::nullopt);

    Outcome route(Request const& request);

private:
    struct Entry {
        std::string host;
        std::unique_ptr<Endpoint> endpoint;
        std::optional<Target> target;
    };
    Entry const* entryFor(std::string_view host) const;

    Faults& m_faults;
    std::vector<Entry> m_entries;
};

} // namespace zelvora::examples
