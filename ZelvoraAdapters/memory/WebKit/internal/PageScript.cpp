#include "ZelvoraAdapters/memory/WebKit/internal/PageScript.h"

#include "ZelvoraPlatform/Foundation/Array.h"

#include <algorithm>

namespace zelvora::memory {

namespace {

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view surroundings = " \n'";
    auto const begin = text.find_first_not_of(surroundings);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(surroundings) + 1 - begin);
}

/// What is between the two, or an empty text; `rest` is moved behind it.
std::string_view takeBetween(std::string_view& rest, std::string_view opening, std::string_view closing)
{
    auto const begin = rest.find(opening);
    auto const end = begin == std::string_view::npos ? begin : rest.find(closing, begin + opening.size());
    if (end == std::string_view::npos)
        return rest = {};
    auto const found = rest.substr(begin + opening.size(), end - begin - opening.size());
    rest.remove_prefix(end + closing.size());
    return found;
}

std::string inQuotes(std::string_view name)
{
    return '"' + std::string(name) + '"';
}

std::string listed(std::vector<std::string> const& names)
{
    std::string list;
    for (auto const& name : names)
        list += (list.empty() ? "" : ", ") + inQuotes(name);
    return list.empty() ? "none" : list;
}

bool contains(std::vector<std::string> const& names, std::string_view name)
{
    return std::ranges::find(names, name) != names.end();
}

}

PageScript::PageScript(std::string_view source, platform::JSONSerialization const& json)
{
    auto rest = source;
    for (auto members = takeBetween(rest, ".postMessage({", "})"); !members.empty();
        members = takeBetween(rest, ".postMessage({", "})"))
        readMessage(members);

    rest = source;
    auto const names = json.jsonObject({ std::string(takeBetween(rest, "var customKeys = ", ";\n")) });
    if (!names || !names->array())
        return;
    for (auto const& name : *names->array()) {
        if (auto const* text = name.text(); text && !text->empty())
            m_customActions.push_back(*text);
    }
}

void PageScript::readMessage(std::string_view members)
{
    std::string_view action;
    Names keys;
    while (!members.empty()) {
        auto const member = members.substr(0, members.find(','));
        members.remove_prefix(std::min(member.size() + 1, members.size()));
        auto const colon = std::min(member.find(':'), member.size());
        auto const key = trimmed(member.substr(0, colon));
        if (key == "action")
            action = trimmed(member.substr(colon + 1));
        else
            keys.emplace_back(key);
    }
    m_actions.insert_or_assign(std::string(action), std::move(keys));
}

std::optional<std::string> PageScript::objection(std::string const& action, platform::Dictionary const& arguments) const
{
    auto const found = m_actions.find(action);
    if (found == m_actions.end())
        return "no function of its script has the action " + inQuotes(action) + '.';
    auto const& keys = found->second;
    for (auto const& [key, value] : arguments) {
        if (!contains(keys, key))
            return inQuotes(action) + " has no key " + inQuotes(key) + "; its keys: " + listed(keys) + '.';
    }
    return action == "invokeCustomAction" ? objectionToCustomAction(arguments) : std::nullopt;
}

std::optional<std::string> PageScript::objectionToCustomAction(platform::Dictionary const& arguments) const
{
    auto const* name = arguments.find("name");
    std::string const* const text = name ? name->text() : nullptr;
    if (!text || !contains(m_customActions, *text)) {
        return "it has no function " + inQuotes(text ? *text : "")
            + "; the app's actions when its screen was opened: " + listed(m_customActions) + '.';
    }
    auto const* data = arguments.find("data");
    if (data && (data->dictionary() || data->array()))
        return "the data of an action is text or null, as its function makes JSON text of an object.";
    return std::nullopt;
}

}
