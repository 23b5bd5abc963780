#include "tests/simulation/Model.h"

#include <cmath>
#include <string_view>

// What a page's messages do.
namespace zelvora::simulation {

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

// Stands for a number until the SDK has written it.
constexpr char const* openNumber = "\x01";

std::string const* textAt(Dictionary const& message, std::string_view key)
{
    auto const* value = message.find(key);
    return value ? value->text() : nullptr;
}

std::string descriptionOf(Value const& body)
{
    return body.text() ? *body.text() : debugDescription(body);
}

}

void Model::expectMessage(std::size_t page, std::string const& name, Value const& body)
{
    if (!isOwned(page) || name != "zelvora")
        return;
    log("debug", "JS Message Received: " + descriptionOf(body));
    if (auto const* message = body.dictionary())
        handle(page, *message);
}

void Model::handle(std::size_t page, Dictionary const& message)
{
    auto const* action = textAt(message, "action");
    if (!action)
        return;
    auto const* key = textAt(message, "key");
    auto const* callback = textAt(message, "callback");
    if (*action == "close") {
        auto const screen = static_cast<ScreenId>(page);
        promise(Queue::Main, { .kind = Block::Kind::Close, .screen = m_screens.container(screen) ? screen : noScreen });
    } else if (*action == "setItem") {
        auto const* value = message.find("value");
        auto const* expire = message.find("expire");
        if (key && value)
            m_store.set(*value, *key, expire ? expire->number() : std::nullopt, m_expected.lines);
    } else if (*action == "getItem") {
        if (key && callback)
            sendCallback(page, *callback, m_store.get(*key, m_expected.lines));
    } else if (*action == "removeItem") {
        if (key)
            m_store.remove(*key, m_expected.lines);
    } else if (*action == "saveEvent") {
        auto const* data = message.find("data");
        if (data && data->dictionary()) {
            m_store.saveEvent(*data->dictionary(), m_expected.lines);
            m_delivery.saved.merge(numbersOf(Array { *data }));
        }
    } else if (*action == "getEvents") {
        if (callback)
            sendCallback(page, *callback, m_store.events(m_expected.lines));
    } else if (*action == "setFooterVisible") {
        auto const* visible = message.find("visible");
        if (visible && visible->boolean())
            setFooterVisible(*visible->boolean());
    } else if (*action == "invokeCustomAction")
        invoke(message);
    else
        log("error", "Unknown JS action: " + *action);
}

void Model::invoke(Dictionary const& message)
{
    auto const* name = textAt(message, "name");
    if (!name)
        return;
    auto const* data = textAt(message, "data");
    log("debug", "invokeCustomAction(name=" + *name + ", data=" + (data ? *data : "null") + ") called");
    auto const found = m_actions.find(*name);
    if (found == m_actions.end())
        return;
    auto const action = found->second;
    m_expected.lines.push_back(
        "action " + std::to_string(action.number) + ": " + (data ? "\"" + *data + "\"" : "nothing"));
    switch (action.kind) {
    case ActionKind::Plain:
        return;
    case ActionKind::HidesFooter:
        return setFooterVisible(false);
    case ActionKind::Uploads:
        return sendTrackingData();
    case ActionKind::ReplacesItself:
        m_actions.insert_or_assign(*name, Action { -action.number, ActionKind::Plain });
        return;
    case ActionKind::SavesEvent:
        return m_store.saveEvent({ { "by", "action" } }, m_expected.lines);
    }
}

void Model::sendCallback(std::size_t page, std::string const& callback, std::optional<Value> const& value)
{
    auto const text = encoded(value);
    if (text == openNumber)
        m_expected.number = value->number();
    log("debug", "Send callback data: " + text);
    promise(Queue::Main,
        { .kind = Block::Kind::Answer, .page = page, .text = text, .script = callback + "(" + text + ");" });
}

std::string Model::encoded(std::optional<Value> const& value) const
{
    if (!value)
        return "null";
    if (m_json.isValidJSONObject(*value))
        return json(*value).value_or("null");
    if (auto const* text = value->text()) {
        auto const written = json(Array { *text });
        return written ? written->substr(1, written->size() - 2) : "'" + *text + "'";
    }
    if (auto const boolean = value->boolean())
        return *boolean ? "true" : "false";
    return value->number() && std::isfinite(*value->number()) ? openNumber : "null";
}

void Model::setAnswerText(std::string const& text)
{
    auto const replace = [&text](std::string& in) {
        if (auto const at = in.find(openNumber); at != std::string::npos)
            in.replace(at, 1, text);
    };
    for (auto& line : m_expected.lines)
        replace(line);
    for (auto& [queue, delay, block] : m_expected.promises) {
        replace(block.text);
        replace(block.script);
    }
}

}
