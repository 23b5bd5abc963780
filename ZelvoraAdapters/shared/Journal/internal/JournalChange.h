#pragma once

#include "ZelvoraAdapters/shared/Journal/internal/ValueCoding.h"
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

/// What a change adds to the live bytes of the file, and what it makes obsolete.
struct ChangeSize {
    ChangeKind kind = ChangeKind::Remove;
    /// For Extend: how many elements it drops from the head of the stored array.
    std::size_t dropped = 0;
    /// The live bytes that it adds: key and value for Set, the appended elements for Extend, none for Remove.
    std::uint64_t bytes = 0;
};

/// A change as read from the file. Valid as long as the bytes that it was read from.
struct JournalChange {
    ChangeSize size;
    std::string_view key;
    /// For Set the encoded value, for Extend the encoded elements that it appends. They have been checked.
    std::string_view bytes;
    /// For Extend: how many elements it appends.
    std::uint64_t appended = 0;
    /// That of the value for Set, or of the last appended element.
    ValueShape shape;
};

/// Appends the change from the stored value of a key to a new one; nullptr is no value. Appends nothing and returns
/// nothing if there is no change to write. For an array that was derived from the stored one, only the difference is
/// appended.
std::optional<ChangeSize> appendChange(
    std::string& payload, std::string_view key, platform::Value const* stored, platform::Value const* wanted);

/// Appends the beginning of a Set change; the encoded value must follow.
void appendSetPrefix(std::string& payload, std::string_view key);

/// Replaces `changes` by those of the payload. False if it is not a sequence of complete changes.
[[nodiscard]] bool readChanges(std::string_view payload, std::vector<JournalChange>& changes);

}
