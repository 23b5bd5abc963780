#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/NotificationCenter.h"

#include <memory>
#include <string>
#include <utility>

namespace zelvora::memory {

/// A notification center that passes every call to another one, its target. Derive from it to observe or change single
/// calls, on a `ForwardingPlatform`; name the base's other functions of the same name with `using`. Any thread.
class ZELVORA_API ForwardingNotificationCenter : public platform::NotificationCenter {
public:
    /// The target must outlive this center.
    explicit ForwardingNotificationCenter(platform::NotificationCenter& target) : m_target(target) { }

    /// What the calls are passed to.
    [[nodiscard]] platform::NotificationCenter& target() const { return m_target; }

    // platform::NotificationCenter
    void post(platform::Notification notification) override { m_target.post(std::move(notification)); }
    void addObserver(std::shared_ptr<void const> const& observer, std::string name, Handler handler) override
    {
        m_target.addObserver(observer, std::move(name), std::move(handler));
    }
    void removeObserver(void const* observer) override { m_target.removeObserver(observer); }
    [[nodiscard]] Token addObserver(std::string name, platform::DispatchQueue& queue, Handler handler) override
    {
        return m_target.addObserver(std::move(name), queue, std::move(handler));
    }
    void removeObserver(Token token) override { m_target.removeObserver(token); }

private:
    platform::NotificationCenter& m_target;
};

}
