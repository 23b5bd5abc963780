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

/// A notification. It names no sender, because the SDK neither posts nor observes with one.
struct Notification {
    /// Handlers that were registered with exactly this name are called.
    std::string name;
    /// What the poster tells besides; absent if that is nothing.
    std::optional<Dictionary> userInfo;

    bool operator==(Notification const&) const = default;
};

/// The default notification center. Any thread. No lock is held while a handler runs, so a handler may post, add and
/// remove.
class ZELVORA_API NotificationCenter {
public:
    /// Called with each notification of the name. Must not be empty.
    using Handler = std::function<void(Notification const&)>;
    /// Names one registration of a handler with a queue, and never another one of the same center.
    using Token = std::uint64_t;

    virtual ~NotificationCenter() = default;

    /// Calls the handlers of this name in the order of their registration: those of observer objects on the caller's
    /// thread before `post` returns, those with a queue later on that queue. Handlers added during the call are not
    /// called.
    virtual void post(Notification notification) = 0;

    /// Registers a handler that is called on the poster's thread. The registration ends when the observer is destroyed:
    /// the center references it weakly and keeps it alive only while its handler runs. The handler must not own the
    /// observer. Each call registers once more.
    virtual void addObserver(std::shared_ptr<void const> const& observer, std::string name, Handler handler) = 0;
    /// Removes all registrations of an observer object, if there are any; the observer's destructor may call it. A
    /// handler that is running on another thread may outlast the call.
    virtual void removeObserver(void const* observer) = 0;

    /// Registers a handler that is called on the queue, which must outlive the registration. Only `removeObserver` with
    /// the returned token ends it.
    [[nodiscard]] virtual Token addObserver(std::string name, DispatchQueue& queue, Handler handler) = 0;
    /// Once this has returned on the queue's own thread, the handler is not called again, not even for what was posted
    /// before. An unknown token is ignored.
    virtual void removeObserver(Token token) = 0;
};

}
