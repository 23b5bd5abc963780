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

// Used in the messages of failed expectations.
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

/// A line of the system log without the prefix common to all lines.
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

/// A fresh platform in memory with the SDK on it; each test runs in its own process. Queues run only when a test calls
/// `platform.runUntilIdle()` or runs them itself.
class SDKTest : public ::testing::Test {
protected:
    explicit SDKTest(memory::Options options = {});

    [[nodiscard]] static ZelvoraSDK& sdk() { return ZelvoraSDK::shared(); }

    /// Initializes with a completion handler that appends to `errors`. Runs no queue.
    ZelvoraSDK::Result initialize(Configuration configuration = {});
    /// Initializes and runs the sequence to its end: the lookup answers with the shop id, and a prompt for tracking is
    /// answered with authorized. If events were queued, their upload is still unanswered afterwards.
    void initializeAndFinish(Configuration configuration = {}, std::string const& shopId = "shop-1");

    /// Runs an initialization whose lookup has its answer to the end: a prompt for tracking is answered with
    /// authorized.
    void allowTrackingAndFinish();

    /// All lines of the system log, without their prefix.
    [[nodiscard]] std::vector<LogMessage> logMessages() const;
    /// The lines of one type.
    [[nodiscard]] std::vector<std::string> logMessages(OSLogType type) const;

    /// The preferences key for a caller's key.
    [[nodiscard]] static std::string fullKey(std::string const& key);
    /// The value in the preferences under a full key.
    [[nodiscard]] std::optional<Value> stored(std::string const& fullKey) const;

    /// The parsed body of a request.
    [[nodiscard]] static Value bodyOf(platform::URLRequest const& request);

    memory::Platform& platform;
    /// What the completion handler of `initialize` was called with.
    std::vector<std::optional<ZelvoraSDKError>> errors;
};

/// An event with a name to distinguish it from others.
[[nodiscard]] Dictionary makeEvent(std::string const& name);
/// Queues this many events, named "0", "1" and so on.
void saveEvents(std::size_t count);
/// The "name" of each event.
[[nodiscard]] std::vector<std::string> names(Array const& events);

}
