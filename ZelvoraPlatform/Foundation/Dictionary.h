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

/// An immutable map from text to values, in the order of its keys' bytes.
class ZELVORA_API Dictionary final {
public:
    using Entry = std::pair<std::string, Value>;
    using Entries = std::vector<Entry>;

    Dictionary();
    Dictionary(std::initializer_list<Entry> entries);
    /// Where a key stands twice the later entry holds.
    explicit Dictionary(Entries entries);

    [[nodiscard]] std::size_t size() const;
    [[nodiscard]] bool isEmpty() const { return size() == 0; }
    /// The value under a key, or nullptr. Valid as long as this dictionary or a copy of it lives.
    [[nodiscard]] Value const* find(std::string_view key) const;
    [[nodiscard]] Entries::const_iterator begin() const;
    [[nodiscard]] Entries::const_iterator end() const;

    [[nodiscard]] std::size_t nesting() const;

    bool operator==(Dictionary const& other) const;

private:
    struct Contents;
    std::shared_ptr<Contents const> m_contents;
};

}
