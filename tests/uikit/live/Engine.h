#pragma once

#include "ZelvoraPlatform/Foundation/Value.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace zelvora::live {

/// A page in a real engine, without a word of the phone's: what the double of WKWebView shows. Main thread; the
/// callbacks are called by `iterate`, and some within the call that causes them.
class Engine {
public:
    struct Callbacks {
        /// A page posted a value to a handler.
        std::function<void(std::string const& handler, platform::Value const& body)> didReceive;
        /// The page, a frame in it or a new window is about to navigate, which waits for the decision. It may be made
        /// later, also when the engine is gone.
        std::function<void(std::string const& url, std::function<void(bool isAllowed)> decide)> decideNavigation;
        std::function<void()> didStart;
        std::function<void()> didCommit;
        /// A load ends without a page, for another one or because it failed.
        std::function<void(bool isCancelled)> didFail;
        std::function<void(std::string const& url)> urlDidChange;
        std::function<void()> processDidDie;
    };

    virtual ~Engine() = default;

    virtual void addScript(std::string const& source, bool atStart, bool inMainFrameOnly) = 0;
    virtual void addHandler(std::string const& name) = 0;
    virtual void removeHandler(std::string const& name) = 0;
    virtual void load(std::string const& url, std::map<std::string, std::string> const& headers) = 0;
    virtual void reload() = 0;
    [[nodiscard]] virtual bool isLoading() = 0;
    [[nodiscard]] virtual bool canGoBack() = 0;
    virtual void goBack() = 0;
    /// The result is absent if the script has none; the error is not empty if it failed.
    virtual void evaluate(std::string const& script,
        std::function<void(std::optional<platform::Value> const& result, std::string const& error)> done) = 0;
    virtual void killProcess() = 0;
};

[[nodiscard]] std::unique_ptr<Engine> makeEngine(Engine::Callbacks callbacks);

/// Lets the engines do what is due; whether there was anything.
bool iterate();

}
