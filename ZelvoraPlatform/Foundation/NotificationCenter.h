#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace zelvora::platform {

class DispatchQueue;

/// What is posted. The SDK neither posts nor observes with a sender, so there is none.
struct Notification {
    std::string name;
    std::optional<Dictionary> userInfo;

    bool operator==(Notification const&) const = default;
};

/// The default notification centre. Any thread.
class ZELVORA_API NotificationCenter {
public:
    using Handler = std::function<void(Notification const&)>;
    using Token = std::uint64_t;

    virtual ~NotificationCenter() = default;

    /// Calls the handlers of this name in the order of their registration: those of observer objects on the caller's
    /// thread before `post` returns, those with a queue later on it. No lock is held meanwhile: a handler may post, add
    /// and remove.
    virtual void post(Notification notification) = 0;

    /// The handler runs on the poster's thread, from any sender. The observer is held weakly, and strongly while its
    /// handler runs; one that is gone is never told.
    virtual void addObserver(std::shared_ptr<void const> const& observer, std::string name, Handler handler) = 0;
    /// Removes all registrations of an observer object; it may be in its destructor.
    virtual void removeObserver(void const* observer) = 0;

    /// The handler runs on the queue, and is held until it is removed by its token. Once `removeObserver` has returned
    /// on that queue's thread the handler is not called again.
    [[nodiscard]] virtual Token addObserver(std::string name, DispatchQueue& queue, Handler handler) = 0;
    virtual void removeObserver(Token token) = 0;
};

}
