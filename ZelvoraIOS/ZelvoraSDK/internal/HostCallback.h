#pragma once

#include <concepts>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

namespace zelvora::internal {

/// A host's callback, kept so that copying it copies a reference. Copying or destroying a `std::function` runs the copy
/// constructors and destructors of whatever the host captured; those may call the SDK, so that neither may happen while
/// a lock is held.
template<typename Function>
class HostCallback final {
public:
    HostCallback() = default;
    HostCallback(std::nullptr_t) { }
    template<typename Callable>
        requires(
            !std::same_as<std::remove_cvref_t<Callable>, HostCallback> && std::constructible_from<Function, Callable>)
    HostCallback(Callable&& callable)
    {
        if (Function function(std::forward<Callable>(callable)); function)
            m_function = std::make_shared<Function const>(std::move(function));
    }

    explicit operator bool() const { return static_cast<bool>(m_function); }

    /// A copy to call or to hand out; empty if the host gave none. Never call this with a lock held.
    [[nodiscard]] Function copy() const { return m_function ? *m_function : Function(); }

private:
    std::shared_ptr<Function const> m_function;
};

}
