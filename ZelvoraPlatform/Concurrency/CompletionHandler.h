#pragma once

#include "ZelvoraPlatform/Concurrency/Block.h"
#include "ZelvoraPlatform/fatalError.h"

#include <type_traits>
#include <utility>

namespace zelvora::platform {

/// Named with a signature, such as `CompletionHandler<void(int)>`.
template<typename Signature>
class CompletionHandler;

/// A callback that must be called exactly once, on the thread that the interface taking it names. Calling it twice, or
/// after moving it away, and destroying it without a call stop the process with a message.
///
///     void fetch(CompletionHandler<void(int)> completion) { completion(7); }
///     fetch([](int number) { use(number); });
///
/// What the callback owns is released when the call returns. The callback may destroy the handler.
template<typename... Arguments>
class CompletionHandler<void(Arguments...)> final {
public:
    /// Holds the callback, which is moved or copied in. It must not be empty.
    template<typename Callable>
        requires(!std::same_as<std::remove_cvref_t<Callable>, CompletionHandler>
            && std::is_invocable_v<std::remove_cvref_t<Callable>&, Arguments...>)
    CompletionHandler(Callable&& callable) : m_block(std::forward<Callable>(callable))
    {
    }
    /// Takes over the duty to call: the other handler must not be called any more and may be destroyed.
    CompletionHandler(CompletionHandler&& other) noexcept : m_block(std::exchange(other.m_block, nullptr)) { }
    CompletionHandler& operator=(CompletionHandler&&) = delete;
    ~CompletionHandler()
    {
        if (m_block)
            fatalError("a completion handler was destroyed without having been called");
    }

    /// The one call that every handler must get.
    void operator()(Arguments... arguments)
    {
        if (!m_block)
            fatalError("a completion handler was called twice");
        auto block = std::exchange(m_block, nullptr);
        block(std::forward<Arguments>(arguments)...);
    }

private:
    Block<void(Arguments...)> m_block;
};

}
