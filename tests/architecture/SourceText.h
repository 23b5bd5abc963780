#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zelvora::architecture {

/// One `#include` line. A name that is neither quoted nor in angle brackets has the kind `Computed`.
struct Include {
    enum class Kind : std::uint8_t { Quoted, Angled, Computed };

    Kind kind = Kind::Computed;
    std::string name;
    int line = 0;

    bool operator==(Include const&) const = default;
};

/// A declaration or definition in the global namespace: its text up to the brace or the semicolon, without comments and
/// without the contents of literals.
struct GlobalDeclaration {
    enum class Ending : std::uint8_t { Brace, Semicolon };

    Ending ending = Ending::Semicolon;
    std::string head;
    int line = 0;

    bool operator==(GlobalDeclaration const&) const = default;
};

/// The includes of a C++ source, except those in comments and literals.
[[nodiscard]] std::vector<Include> includesOf(std::string_view source);

/// Everything at brace depth zero, including namespaces: the head of `namespace a { ... }` is `namespace a`.
[[nodiscard]] std::vector<GlobalDeclaration> globalDeclarationsOf(std::string_view source);

}
