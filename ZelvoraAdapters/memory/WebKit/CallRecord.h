#pragma once

#include "ZelvoraPlatform/Export.h"

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace zelvora::memory {

/// The calls to views, web views and their content controllers, in one common order. Main thread.
class ZELVORA_API CallRecord final {
public:
    /// A call, and what it was made on.
    struct Call {
        /// For comparison only; nullptr once the object is destroyed. For a view, the address of its `UIView`.
        void const* object = nullptr;
        /// The method, and after a space its argument if that is a plain value: "setHidden true".
        std::string text;

        bool operator==(Call const&) const = default;
    };

    /// For the adapter itself.
    void add(void const* object, std::string text) { m_calls.push_back({ object, std::move(text) }); }

    /// Every call since the record was cleared last.
    [[nodiscard]] std::vector<Call> const& all() const { return m_calls; }
    /// The texts of the calls to these objects, in order.
    [[nodiscard]] std::vector<std::string> of(std::initializer_list<void const*> objects) const;
    /// For the adapter itself: the object is destroyed, and another may get its address.
    void forget(void const* object);
    /// Forgets the calls so far.
    void clear() { m_calls.clear(); }

private:
    std::vector<Call> m_calls;
};

}
