#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zelvora::platform {

/// An immutable map from text to values, in the order of its keys' bytes. A copy costs a reference count, and one
/// dictionary may be read on many threads. A dictionary that was moved from may only be assigned or destroyed.
class ZELVORA_API Dictionary final {
public:
    /// A key, which is UTF-8, and its value.
    using Entry = std::pair<std::string, Value>;
    /// Entries in any order where they are given, and in the order of their keys' bytes where they are read.
    using Entries = std::vector<Entry>;

    Dictionary();
    /// If a key repeats, the last entry wins.
    /// @{
    Dictionary(std::initializer_list<Entry> entries);
    explicit Dictionary(Entries entries);
    /// @}

    /// Each key counts once. O(1).
    /// @{
    [[nodiscard]] std::size_t size() const;
    [[nodiscard]] bool isEmpty() const { return size() == 0; }
    /// @}
    /// The value under the key, or nullptr. Valid while this dictionary or a copy of it lives. O(log n).
    [[nodiscard]] Value const* find(std::string_view key) const;
    [[nodiscard]] Entries::const_iterator begin() const;
    [[nodiscard]] Entries::const_iterator end() const;

    /// As `Value::nesting`, at least 1.
    [[nodiscard]] std::size_t nesting() const;

    bool operator==(Dictionary const& other) const;

private:
    struct Contents;
    std::shared_ptr<Contents const> m_contents;
};

}
