#pragma once

#include <concepts>
#include <cstddef>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace zelvora::internal {

template<typename Function>
class HostCallback;

/// A host's callback, kept so that all copies are one callable with one state: a closure that counts its calls counts
/// them all. Copying copies a reference, and no copy constructor or destructor of what the host captured runs while a
/// lock is held, where it could not call the SDK.
template<typename... Arguments, typename Result>
class HostCallback<std::function<Result(Arguments...)>> final {
public:
    using Function = std::function<Result(Arguments...)>;

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

    /// To call or to hand out; empty if the host gave none. It shares the host's callable.
    [[nodiscard]] Function function() const
    {
        if (!m_function)
            return {};
        return [function = m_function](
                   Arguments... arguments) { return (*function)(std::forward<Arguments>(arguments)...); };
    }

private:
    std::shared_ptr<Function const> m_function;
};

}
