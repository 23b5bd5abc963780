#pragma once

#include <concepts>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace zelvora::platform {

/// Named with a signature, such as `Block<void(int)>`.
template<typename Signature>
class Block;

/// A callable that can be moved but not copied, so that it may own what it captures. An empty block must not be called.
template<typename Result, typename... Arguments>
class Block<Result(Arguments...)> final {
public:
    /// An empty block.
    /// @{
    Block() = default;
    Block(std::nullptr_t) { }
    /// @}
    /// Holds the callable, which is moved or copied in.
    template<typename Callable>
        requires(!std::same_as<std::remove_cvref_t<Callable>, Block>
            && std::is_invocable_r_v<Result, std::remove_cvref_t<Callable>&, Arguments...>)
    Block(Callable&& callable)
        : m_held(std::make_unique<Holder<std::remove_cvref_t<Callable>>>(std::forward<Callable>(callable)))
    {
    }

    /// Whether the block holds a callable.
    explicit operator bool() const { return static_cast<bool>(m_held); }
    /// Calls what the block holds, as often as it is asked to. The block must outlive the call.
    Result operator()(Arguments... arguments) { return m_held->call(std::forward<Arguments>(arguments)...); }

private:
    struct Held {
        virtual ~Held() = default;
        virtual Result call(Arguments... arguments) = 0;
    };

    template<typename Callable>
    struct Holder final : Held {
        explicit Holder(Callable held) : callable(std::move(held)) { }
        Result call(Arguments... arguments) override
        {
            return std::invoke(callable, std::forward<Arguments>(arguments)...);
        }

        Callable callable;
    };

    std::unique_ptr<Held> m_held;
};

}
