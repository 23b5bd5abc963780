#pragma once

#include "ZelvoraPlatform/Foundation/Value.h"

#include <nlohmann/json.hpp>
#include <string>

namespace zelvora::developer {

using Json = nlohmann::json;

/// The value as JSON. What JSON has no kind for becomes a text that tells it: a date, bytes, a number that is not
/// finite, and what nests deeper than the SDK accepts.
[[nodiscard]] Json toJson(platform::Value const& value);

/// Whether what was found is as expected: an object may have members beside those expected, at every depth; all else
/// has to be equal.
[[nodiscard]] bool fits(Json const& expected, Json const& found);

/// The JSON on one line; a longer one ends in "…" after about so many bytes.
[[nodiscard]] std::string lineOf(Json const& json, std::size_t limit);
/// The text, cut in the same way between two letters.
[[nodiscard]] std::string shortened(std::string text, std::size_t limit);

}
