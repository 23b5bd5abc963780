#pragma once

#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/URL.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

// What most tests of a host begin with, and what they do as a page. Main thread.
//
//     auto& platform = memory::readyShop();
//     app.openShop(); // initialize and start
//     platform.runUntilIdle();
//     memory::Page page(platform);
//     page.post("invokeCustomAction", { { "name", "share" }, { "data", "tea" } });
namespace zelvora::memory {

/// Makes a platform in memory on which the shop opens without a further word from the test, installs it and returns it:
/// the service answers each request at once with the id "shop", which uploads take for a success, and a user who has
/// not been asked about tracking yet has refused it. Once per process.
[[nodiscard]] ZELVORA_API Platform& readyShop(Options options = {});

/// The page of the shop that opened last. It does not keep the shop: once that is closed the page is gone.
class ZELVORA_API Page final {
public:
    /// Stops the process if no web view exists.
    explicit Page(Platform& platform);

    /// Posts a message to the SDK, as `window.ZelvoraSDKBridge` does: its "action" and the keys of that action. Then
    /// runs the queues until they are idle, so that all has happened what the message causes. Stops the process if the
    /// page is gone.
    void post(std::string const& action, platform::Dictionary const& arguments = {}) const;
    /// The calls of the page's functions with which it was answered, in order, such as `gotItem("tea");`. Empty if the
    /// page is gone.
    [[nodiscard]] std::vector<std::string> answers() const;
    /// The address; absent if there is none, or no page any more.
    [[nodiscard]] std::optional<std::string> url() const;
    /// Whether its web view is destroyed, as that of a closed shop is.
    [[nodiscard]] bool isGone() const { return m_view.expired(); }

private:
    Platform& m_platform;
    std::weak_ptr<WebView> m_view;
};

}
