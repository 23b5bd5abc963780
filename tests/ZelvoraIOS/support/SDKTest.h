#pragma once

#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/ZelvoraSDKError.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "tests/ZelvoraIOS/support/ZelvoraSDKInspector.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace zelvora::platform {

// For the messages of failed expectations.
void PrintTo(OSLogType type, std::ostream* stream);
void PrintTo(Value const& value, std::ostream* stream);
void PrintTo(Array const& array, std::ostream* stream);
void PrintTo(Dictionary const& dictionary, std::ostream* stream);
void PrintTo(URL const& url, std::ostream* stream);

}

namespace zelvora {

void PrintTo(ZelvoraSDKError const& error, std::ostream* stream);

}

namespace zelvora::tests {

using platform::Array;
using platform::Dictionary;
using platform::OSLogType;
using platform::Value;

/// A line of the system log without the prefix that every line has.
struct LogMessage {
    OSLogType type = OSLogType::Default;
    std::string text;

    bool operator==(LogMessage const&) const = default;
};
void PrintTo(LogMessage const& message, std::ostream* stream);

/// The arguments of `initialize`.
struct Configuration {
    std::string userKey = "user-1";
    std::string apiKey = "media-1";
    bool isTrackingEnabled = true;
    bool isDev = false;
    bool allowsSwipeBack = false;
    ZelvoraSDK::ViewProvider headerViewProvider {};
    ZelvoraSDK::ViewProvider footerViewProvider {};
    std::shared_ptr<ZelvoraSDK::ZelvoraSDKDelegate> delegate {};
};

/// A fresh system in memory with the SDK on it; each test runs in a process of its own. Nothing happens by itself:
/// queues are turned by `platform.runUntilIdle()`. A derived fixture passes other options on.
class SDKTest : public ::testing::Test {
protected:
    explicit SDKTest(memory::Options options = {});

    [[nodiscard]] static ZelvoraSDK& sdk() { return ZelvoraSDK::shared(); }

    /// Initializes with a completion handler that keeps what it is told in `errors`; no queue is turned.
    ZelvoraSDK::Result initialize(Configuration configuration = {});
    /// Initializes and carries the sequence through: the lookup answers with the shop id, a prompt for tracking is
    /// answered with authorized. Afterwards nothing is pending but an upload, where events were queued.
    void initializeAndFinish(Configuration configuration = {}, std::string const& shopId = "shop-1");

    /// All lines of the system log, without their prefix.
    [[nodiscard]] std::vector<LogMessage> logMessages() const;
    /// Those of one type.
    [[nodiscard]] std::vector<std::string> logMessages(OSLogType type) const;

    /// The key under which the store keeps a caller's key.
    [[nodiscard]] static std::string fullKey(std::string const& key);
    /// What the preferences hold under a full key.
    [[nodiscard]] std::optional<Value> stored(std::string const& fullKey) const;

    /// What the body of a request holds.
    [[nodiscard]] static Value bodyOf(platform::URLRequest const& request);

    memory::Platform& platform;
    /// What the completion handler of `initialize` was called with.
    std::vector<std::optional<ZelvoraSDKError>> errors;
};

/// An event that can be told from others.
[[nodiscard]] Dictionary makeEvent(std::string const& name);
/// As many events as asked, named "0", "1" and so on, put into the queue.
void saveEvents(std::size_t count);
/// The "name" of each event.
[[nodiscard]] std::vector<std::string> names(Array const& events);

}
