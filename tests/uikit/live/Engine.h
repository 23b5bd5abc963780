#pragma once

#include <functional>
#include <memory>
#include <string>

namespace zelvora::live {

/// A page in a real engine, without a word of the phone's: what the double of WKWebView shows. Values of pages are
/// JSON. Main thread; the callbacks are called by `iterate`.
class Engine {
public:
    struct Callbacks {
        /// A page posted a value to a handler.
        std::function<void(std::string const& handler, std::string const& json)> didReceive;
        /// Whether the page, or a frame, may navigate there.
        std::function<bool(std::string const& url)> mayNavigate;
        std::function<void()> didStart;
        std::function<void(std::string const& url)> urlDidChange;
    };

    virtual ~Engine() = default;

    virtual void addScript(std::string const& source, bool atStart, bool inMainFrameOnly) = 0;
    virtual void addHandler(std::string const& name) = 0;
    virtual void removeHandler(std::string const& name) = 0;
    /// Shows this page under an address, at which nothing is asked for.
    virtual void load(std::string const& html, std::string const& url) = 0;
    /// The result is empty text if the script has none; an error is not.
    virtual void evaluate(
        std::string const& script, std::function<void(std::string const& json, std::string const& error)> done) = 0;
};

[[nodiscard]] std::unique_ptr<Engine> makeEngine(Engine::Callbacks callbacks);

/// Lets the engines do what is due; whether there was anything.
bool iterate();

}
