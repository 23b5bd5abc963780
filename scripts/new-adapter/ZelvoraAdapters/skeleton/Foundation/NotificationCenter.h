#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/Foundation/NotificationCenter.h"

#include <memory>
#include <string>

namespace zelvora::skeleton {

/// `ZelvoraAdapters/shared` has one in standard C++: `using NotificationCenter = shared::NotificationCenter;` is all of
/// it then.
class NotificationCenter final : public platform::NotificationCenter {
public:
    // platform::NotificationCenter
    void post(platform::Notification) override { missing("NotificationCenter::post"); }
    void addObserver(std::shared_ptr<void const> const&, std::string, Handler) override
    {
        missing("NotificationCenter::addObserver");
    }
    void removeObserver(void const*) override { missing("NotificationCenter::removeObserver"); }
    [[nodiscard]] Token addObserver(std::string, platform::DispatchQueue&, Handler) override
    {
        missing("NotificationCenter::addObserver, with a queue");
    }
    void removeObserver(Token) override { missing("NotificationCenter::removeObserver, with a token"); }
};

}
