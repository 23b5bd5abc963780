#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvora::examples {

/// Reads JSON that a client sent. Absent when it is no JSON, or is nested deeper than any honest client
/// would: walking such a tree needs a stack as deep as the sender likes.
std::optional<nlohmann::json> parseJson(std::string_view text);

/// The elements of the array under `member`, each as the very text that the sender wrote.
/// `object` must be the text of a JSON object that parseJson accepted, and the member an array in it.
std::vector<std::string> rawElements(std::string_view object, std::string_view member);

} // namespace zelvora::examples
