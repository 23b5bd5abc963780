#pragma once

#include "examples/developer/script/Expectations.h"
#include "examples/developer/script/Script.h"
#include "examples/developer/script/ScriptedApp.h"

#include <functional>
#include <optional>
#include <string>

namespace zelvora::developer {

/// Lets an app do what a script says, up to the first step that fails. Main thread.
class ScriptRunner final {
public:
    explicit ScriptRunner(ScriptedApp& app) : m_app(app), m_expectations(app) { }

    /// Called when a step is done, with the sentence that says why if it failed.
    using Report = std::function<void(Step const&, std::optional<std::string> const& failure)>;

    /// Whether every step succeeded.
    [[nodiscard]] bool run(Script const& script, Report const& report);

private:
    using Result = ScriptedApp::Result;

    [[nodiscard]] Result perform(Step const& step);
    [[nodiscard]] Result performOnPage(Step const& step);
    [[nodiscard]] Result performOnApp(Step const& step);
    [[nodiscard]] Result waitFor(std::string const& expression, std::string const& what);
    [[nodiscard]] Result useElement(std::string const& selector, std::string const& use);
    [[nodiscard]] Result expect(Step const& step);

    ScriptedApp& m_app;
    Expectations m_expectations;
    double m_patience = 10;
};

}
