#pragma once

#include "examples/service/Faults.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace zelvora::examples {

/// How the control endpoint spells what can be told to fail, and how.
inline constexpr std::array<std::pair<Target, std::string_view>, 3> s_targetNames { {
    { Target::Lookup, "lookup" },
    { Target::Collector, "collector" },
    { Target::Site, "site" },
} };

inline constexpr std::array<std::pair<Cut, std::string_view>, 2> s_cutNames { {
    { Cut::BeforeAnswer, "before-answer" },
    { Cut::MidBody, "mid-body" },
} };

inline constexpr std::array<std::pair<BodyFault, std::string_view>, 5> s_bodyNames { {
    { BodyFault::Empty, "empty" },
    { BodyFault::BrokenJson, "broken-json" },
    { BodyFault::WrongShape, "wrong-shape" },
    { BodyFault::Huge, "huge" },
    { BodyFault::Text, "text" },
} };

template<typename Table>
auto valueNamed(Table const& table, std::string_view name)
{
    auto const found = std::ranges::find(table, name, &Table::value_type::second);
    return found == table.end() ? std::nullopt : std::optional(found->first);
}

inline std::string_view nameOf(Cut cut)
{
    return std::ranges::find(s_cutNames, cut, &std::pair<Cut, std::string_view>::first)->second;
}

inline std::string_view nameOf(BodyFault body)
{
    return std::ranges::find(s_bodyNames, body, &std::pair<BodyFault, std::string_view>::first)->second;
}

} // namespace zelvora::examples
