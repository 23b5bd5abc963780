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
//     page.invoke("share", "tea");
namespace zelvora::memory {

/// Makes a platform in memory on which the shop opens without further setup by the test, installs it and returns it.
/// The service answers each request at once with the id "shop", which an upload takes as a success. The user has
/// refused tracking unless the options give another answer. Once per process.
[[nodiscard]] ZELVORA_API Platform& readyShop(Options options = {});

/// The page of the shop that opened last. It does not keep the shop: once that is closed the page is gone.
class ZELVORA_API Page final {
public:
    /// Stops the process if no web view exists.
    explicit Page(Platform& platform);

    /// The functions of `window.ZelvoraSDKBridge`, with the parameters that they have in a page. Each runs the queues
    /// until they are idle, so that everything that the call causes has happened when it returns. It stops the process
    /// if the page is gone.
    /// @{
    void close() const;
    void setItem(
        std::string const& key, platform::Value const& value, std::optional<double> expireSec = std::nullopt) const;
    void getItem(std::string const& key, std::string const& callbackName) const;
    void removeItem(std::string const& key) const;
    void saveEvent(platform::Dictionary const& data) const;
    void getEvents(std::string const& callbackName) const;
    void setFooterVisible(bool visible) const;
    /// @}
    /// Calls the function of one of the app's actions, with a text or with the JSON text of an object. As in a page, an
    /// empty text is no data.
    void invoke(std::string const& name, std::string const& data = "") const;
    /// Posts the message of such a function: its "action" and that action's keys. A message that the page's script
    /// cannot post is posted too, and is reported as a complaint (see `Screen::complaints`): one with an unknown action
    /// or key, or with an action of the app's that was not registered when the page's screen was opened. A test of what
    /// a hostile page posts calls `WebView::postMessage`, which takes anything.
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
