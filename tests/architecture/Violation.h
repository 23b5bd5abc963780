#pragma once

#include <ostream>
#include <string>

namespace zelvora::architecture {

/// A line that breaks a rule of the architecture.
struct Violation {
    /// The path from the top of the tree.
    std::string file;
    int line = 0;
    std::string reason;

    bool operator==(Violation const&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, Violation const& violation)
{
    return stream << violation.file << ':' << violation.line << ": " << violation.reason;
}

}
