#pragma once

#include "ZelvoraAdapters/shared/Foundation/NotificationCenter.h"
#include "ZelvoraPlatform/Foundation/NotificationCenter.h"

#import <Foundation/Foundation.h>

#include <memory>
#include <mutex>
#include <string>

namespace zelvora::uikit {

/// The app's default notification center, which the host posts to as well. The system promises no order, so the
/// handlers are kept here, and one native observer for each name calls them. User info that cannot be converted to a
/// dictionary of ours is left out.
class NotificationCenter final : public platform::NotificationCenter {
public:
    NotificationCenter();
    NotificationCenter(NotificationCenter const&) = delete;
    NotificationCenter& operator=(NotificationCenter const&) = delete;
    ~NotificationCenter() override;

    // platform::NotificationCenter
    void post(platform::Notification notification) override;
    void addObserver(std::shared_ptr<void const> const& observer, std::string name, Handler handler) override;
    void removeObserver(void const* observer) override;
    [[nodiscard]] Token addObserver(std::string name, platform::DispatchQueue& queue, Handler handler) override;
    void removeObserver(Token token) override;

private:
    void observe(std::string const& name);

    // Shared with the native observers, which may be running on other threads.
    std::shared_ptr<shared::NotificationCenter> m_handlers = std::make_shared<shared::NotificationCenter>();
    std::mutex m_mutex;
    NSMutableDictionary* m_observers;
};

}
