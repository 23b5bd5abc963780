#include "examples/developer/script/ScriptRunner.h"

#include "ZelvoraPlatform/Foundation/NumberText.h"

namespace zelvora::developer {

namespace {

std::string literal(std::string const& text)
{
    return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string elementOf(std::string const& selector)
{
    return "document.querySelector(" + literal(selector) + ")";
}

// As a person does it, who sees no others.
std::string visible(std::string const& selector)
{
    return elementOf(selector) + "?.getClientRects().length > 0";
}

// Through the editor's own command, so that frameworks notice it as they notice keys.
std::string typing(std::string const& text)
{
    return "element.focus(); element.select?.(); document.execCommand('insertText', false, " + literal(text)
        + "); element.dispatchEvent(new Event('change', { bubbles: true }));";
}

}

bool ScriptRunner::run(Script const& script, Report const& report)
{
    for (auto const& step : script) {
        auto const result = perform(step);
        report(step, result ? std::nullopt : std::optional(result.error()));
        if (!result)
            return false;
    }
    return true;
}

ScriptRunner::Result ScriptRunner::perform(Step const& step)
{
    if (Expectations::isExpectation(step.verb))
        return expect(step);
    if (step.verb >= Verb::WaitForText && step.verb <= Verb::Run)
        return m_app.isOpen() ? performOnPage(step) : std::unexpected("the screen is closed; open it with \"open\"");
    return performOnApp(step);
}

ScriptRunner::Result ScriptRunner::performOnPage(Step const& step)
{
    auto const& first = step.words.at(0);
    switch (step.verb) {
    case Verb::WaitForText:
        return waitFor("document.body.innerText.includes(" + literal(first) + ")", "the page does not show this text");
    case Verb::WaitForElement:
        return waitFor(visible(first), "the page shows no such element");
    case Verb::WaitUntil:
        return waitFor(first, "this is not true");
    case Verb::Tap:
        return useElement(first, "element.scrollIntoView({ block: 'center' }); element.click();");
    case Verb::Type:
        return useElement(step.words.at(1), typing(first));
    default:
        return m_app.run(first);
    }
}

ScriptRunner::Result ScriptRunner::performOnApp(Step const& step)
{
    switch (step.verb) {
    case Verb::Open:
        return m_app.open(step.words.empty() ? std::nullopt : std::optional(step.words.front()), m_patience);
    case Verb::SwipeBack:
        return m_app.swipeBack();
    case Verb::Reload:
        return m_app.reload(m_patience);
    case Verb::Picture:
        return m_app.takePicture(step.words.at(0));
    case Verb::Upload:
        m_app.upload();
        break;
    case Verb::KillPage:
        m_app.killPage();
        break;
    case Verb::Footer:
        m_app.setFooterVisible(step.words.at(0) == "on");
        break;
    case Verb::Switch:
        m_app.setSwitches(*switched(m_app.switches(), step.words.at(0), step.words.at(1)));
        break;
    case Verb::Pass:
        m_app.pass(*step.number);
        break;
    case Verb::Show:
        m_app.show(step.words.at(0));
        break;
    default:
        m_patience = *step.number;
    }
    return {};
}

ScriptRunner::Result ScriptRunner::waitFor(std::string const& expression, std::string const& what)
{
    if (m_app.waitUntilTrue(expression, m_patience))
        return {};
    return std::unexpected(what + " after " + platform::numberText(m_patience) + " s");
}

ScriptRunner::Result ScriptRunner::useElement(std::string const& selector, std::string const& use)
{
    auto const appears = waitFor(visible(selector), "the page shows no such element");
    return appears ? m_app.run("const element = " + elementOf(selector) + "; " + use) : appears;
}

ScriptRunner::Result ScriptRunner::expect(Step const& step)
{
    // What the page did before has to be here, as something that has not come yet is no sign that it will not.
    if (Expectations::isAboutAbsence(step.verb) && m_app.isOpen())
        (void)m_app.run("");
    std::optional<std::string> finding;
    auto const holds = [&] {
        finding = m_expectations.check(step);
        return !finding;
    };
    // What was dropped stays dropped.
    auto const patience = step.verb == Verb::ExpectNothingDropped ? 0 : m_patience;
    if (m_app.waitUntil(holds, patience))
        return {};
    return std::unexpected((patience > 0 ? "after " + platform::numberText(patience) + " s: " : "") + *finding);
}

}
