#pragma once

#include "examples/developer/observing/Records.h"
#include "examples/developer/observing/StoredValues.h"
#include "examples/developer/script/Switches.h"

#include <expected>
#include <functional>
#include <optional>
#include <string>

namespace zelvora::developer {

/// The app as a script uses it. A failure is a sentence. Main thread; calls that wait let the app go on meanwhile.
class ScriptedApp {
public:
    using Result = std::expected<void, std::string>;

    virtual ~ScriptedApp() = default;

    /// Waits until the condition holds; false if it does not after so many seconds.
    [[nodiscard]] virtual bool waitUntil(std::function<bool()> const& condition, double seconds) = 0;
    /// Waits until the expression is true in the page. One that throws is not.
    [[nodiscard]] virtual bool waitUntilTrue(std::string const& expression, double seconds) = 0;
    /// Runs a script in the page and waits for its end, and for all that it posted. The error is the page's own.
    [[nodiscard]] virtual Result run(std::string const& script) = 0;

    /// Opens the shop's screen if the page has closed it, and then a page: relative to the first one, or the first one
    /// itself.
    [[nodiscard]] virtual Result open(std::optional<std::string> const& page, double seconds) = 0;
    [[nodiscard]] virtual Result reload(double seconds) = 0;
    [[nodiscard]] virtual Result swipeBack() = 0;
    virtual void upload() = 0;
    /// Ends the process of the page, which the app then loads again.
    virtual void killPage() = 0;
    virtual void setFooterVisible(bool visible) = 0;
    [[nodiscard]] virtual Switches const& switches() const = 0;
    virtual void setSwitches(Switches const& switches) = 0;
    /// Lets the app's clock go on.
    virtual void pass(double seconds) = 0;
    /// Brings a part of the panel to the front: "values", "events", "uploads" or "notices".
    virtual void show(std::string const& part) = 0;
    [[nodiscard]] virtual Result takePicture(std::string const& name) = 0;

    [[nodiscard]] virtual Records const& records() const = 0;
    [[nodiscard]] virtual std::optional<StoredValue> storedValue(std::string const& key) const = 0;
    [[nodiscard]] virtual Json queuedEvents() const = 0;
    [[nodiscard]] virtual bool isOpen() const = 0;
    [[nodiscard]] virtual bool isFooterVisible() const = 0;
};

}
