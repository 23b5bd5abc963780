#pragma once

#include "examples/developer/observing/Records.h"
#include "examples/developer/observing/StoredValues.h"
#include "examples/developer/observing/Text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zelvora::developer {

/// How a row's mark looks.
enum class Mark : std::uint8_t { None, Good, Answer, Bad, Waiting };

/// One line of a list in the panel, in one language.
struct PanelRow {
    std::string title;
    /// What stands at the end of the title's line.
    std::string mark {};
    Mark look = Mark::None;
    /// The line below; may be empty.
    std::string note {};
    /// What the page's author should know, below that; may be empty.
    std::string warning {};
    /// What opens when the row is clicked; may be empty.
    std::string details {};

    bool operator==(PanelRow const&) const = default;
};

/// Newest first, and no more than so many.
inline constexpr std::size_t mostPanelRows = 300;

[[nodiscard]] std::vector<PanelRow> messageRows(Records const& records, Language language);
[[nodiscard]] std::vector<PanelRow> valueRows(std::vector<StoredValue> const& values, Language language);
[[nodiscard]] std::vector<PanelRow> eventRows(Json const& events, Language language);
[[nodiscard]] std::vector<PanelRow> uploadRows(Records const& records, Language language);
/// The page-navigation notices, and what the SDK complained of.
[[nodiscard]] std::vector<PanelRow> navigationRows(Records const& records, Language language);

}
