#pragma once

#include <optional>
#include <string>

namespace zelvora::gtk {

/// Where an answer sends its request, and how it is made there.
struct Redirection {
    std::string location;
    /// Whether it becomes a GET without a body, as in every browser after a form was posted.
    bool becomesGet = false;

    bool operator==(Redirection const&) const = default;
};

/// Absent where the answer is to be taken as it is: it is no redirection, or it does not say where to (a null
/// `location`).
[[nodiscard]] std::optional<Redirection> redirection(std::string const& method, unsigned status, char const* location);

}
