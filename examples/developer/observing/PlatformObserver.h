#pragma once

#include "ZelvoraPlatform/Foundation/NotificationCenter.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"
#include "ZelvoraPlatform/WebKit/WKScriptMessage.h"
#include "ZelvoraPlatform/os/Logger.h"

#include <cstdint>
#include <expected>
#include <string>

namespace zelvora::developer {

/// Is told what passes between the SDK and its platform. Main thread; what happens on other threads is told there
/// later. Between `willHandleMessage` and `didHandleMessage` only what the SDK does with that message is told.
class PlatformObserver {
public:
    virtual ~PlatformObserver() = default;

    virtual void willHandleMessage(platform::WKScriptMessage const& /*message*/) { }
    virtual void didHandleMessage() { }
    virtual void didWritePreferences() { }
    virtual void didQueueWork() { }
    virtual void didPost(platform::Notification const& /*notification*/) { }
    virtual void didLog(platform::OSLogType /*type*/, std::string const& /*line*/) { }
    /// Requests are numbered from 1 in the order in which they are made.
    virtual void didSend(std::uint64_t /*number*/, platform::URLRequest const& /*request*/) { }
    virtual void didReceive(
        std::uint64_t /*number*/, std::expected<platform::URLSession::Answer, platform::Error> const& /*answer*/)
    {
    }
};

}
