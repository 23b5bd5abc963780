#pragma once

#include <optional>
#include <string>

namespace zelvora::gtk {

/// Where a response redirects its request, and how the request continues there.
struct Redirection {
    std::string location;
    /// Whether the request becomes a GET without a body, as in every browser after a form was posted.
    bool becomesGet = false;

    bool operator==(Redirection const&) const = default;
};

/// Absent if the response is final: it is no redirection, or it has no location (nullptr).
[[nodiscard]] std::optional<Redirection> redirection(std::string const& method, unsigned status, char const* location);

}
