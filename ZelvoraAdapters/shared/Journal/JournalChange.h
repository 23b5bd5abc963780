#pragma once

#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvora::shared {

/// What a change does to its key. Part of the file format.
enum class ChangeKind : std::uint8_t { Set = 1, Remove = 2, Extend = 3 };

/// How a change weighs in the file.
struct ChangeSize {
    ChangeKind kind = ChangeKind::Remove;
    /// How many elements it drops from the head of the stored array; for Extend.
    std::size_t dropped = 0;
    /// The bytes that stay of use: a set value with its key, the appended elements; nothing for Remove.
    std::uint64_t bytes = 0;
};

/// One change as read from the file. Refers to the bytes that it was read from.
struct JournalChange {
    ChangeSize size;
    std::string_view key;
    /// For Set.
    platform::Value value;
    /// For Extend.
    std::vector<platform::Value> appended;
};

/// Appends the change that leads from what is stored under a key to what is wanted there, nullptr being nothing.
/// Absent, and nothing appended, where there is no change to write. An array that was made from the stored one costs
/// what is new in it.
std::optional<ChangeSize> appendChange(
    std::string& payload, std::string_view key, platform::Value const* stored, platform::Value const* wanted);

/// What the change that sets a value begins with; the value's encoding follows.
void appendSetPrefix(std::string& payload, std::string_view key);

/// Absent where the payload is not a run of whole changes.
[[nodiscard]] std::optional<std::vector<JournalChange>> readChanges(std::string_view payload);

}
