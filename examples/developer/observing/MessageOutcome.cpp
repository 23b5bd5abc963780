#include "examples/developer/observing/MessageOutcome.h"

#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/NumberText.h"
#include "examples/developer/observing/Json.h"
#include "examples/developer/observing/StoredValues.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace zelvora::developer {

using platform::Dictionary;
using platform::Value;

namespace {

using Kind = Value::Kind;

// What a page reads of an answer or a value; the rest is in the message itself.
constexpr std::size_t mostQuoted = 120;

struct Argument {
    std::string_view action;
    char const* name;
    /// Absent if any kind will do.
    std::optional<Kind> kind;
    char const* korean;
    char const* english;
};

// In the order in which the SDK looks at them.
constexpr std::array<Argument, 9> arguments { {
    { "setItem", "key", Kind::Text, "키는 문자열이어야 합니다", "a key is a text" },
    { "setItem", "value", std::nullopt, "값을 지우려면 removeItem을 쓰세요", "use removeItem to remove a value" },
    { "getItem", "key", Kind::Text, "키는 문자열이어야 합니다", "a key is a text" },
    { "getItem", "callback", Kind::Text, "전역 함수의 이름을 문자열로 주세요",
        "pass the name of a global function as text" },
    { "removeItem", "key", Kind::Text, "키는 문자열이어야 합니다", "a key is a text" },
    { "saveEvent", "data", Kind::Dictionary, "JSON 문자열이 아니라 객체를 주세요",
        "pass an object, not its JSON text" },
    { "getEvents", "callback", Kind::Text, "전역 함수의 이름을 문자열로 주세요",
        "pass the name of a global function as text" },
    { "setFooterVisible", "visible", Kind::Boolean, "true나 false를 주세요", "pass true or false" },
    { "invokeCustomAction", "name", Kind::Text, "동작의 이름은 문자열이어야 합니다",
        "the name of an action is a text" },
} };

Text nameOf(Kind kind)
{
    switch (kind) {
    case Kind::Null:
        return { "null", "null" };
    case Kind::Boolean:
        return { "불리언", "a boolean" };
    case Kind::Number:
        return { "숫자", "a number" };
    case Kind::Text:
        return { "문자열", "a text" };
    case Kind::Date:
        return { "날짜", "a date" };
    case Kind::Data:
        return { "바이트", "bytes" };
    case Kind::Array:
        return { "배열", "an array" };
    case Kind::Dictionary:
        return { "객체", "an object" };
    }
    return {};
}

std::string textAt(Dictionary const& message, std::string_view name)
{
    auto const* const value = message.find(name);
    auto const* const text = value ? value->text() : nullptr;
    return text ? *text : "";
}

std::optional<Text> complaint(Argument const& argument, Value const* value)
{
    std::string const name = argument.name;
    if (!value)
        return Text { name + ": 없습니다. " + argument.korean, name + " is missing: " + argument.english };
    if (!argument.kind || value->kind() == *argument.kind)
        return std::nullopt;
    auto const kind = nameOf(value->kind());
    return Text { name + ": " + kind.korean + "입니다. " + argument.korean,
        name + " is " + kind.english + ": " + argument.english };
}

Text reasonFor(Value const& body)
{
    auto const* const message = body.dictionary();
    if (!message)
        return { "메시지가 객체가 아닙니다", "the message is no object" };
    auto const* const action = message->find("action");
    if (!action || !action->text())
        return { "메시지에 action이 없습니다", "the message has no action" };
    for (auto const& argument : arguments) {
        if (argument.action != *action->text())
            continue;
        if (auto const found = complaint(argument, message->find(argument.name)))
            return *found;
    }
    if (*action->text() == "invokeCustomAction") {
        auto const name = textAt(*message, "name");
        return { "앱에 이런 동작이 없습니다: " + name, "the app has no action " + name };
    }
    return { "SDK가 아무것도 하지 않았습니다", "the SDK did nothing" };
}

Text dropped(Value const& body, Effects const& effects)
{
    constexpr std::string_view unknown = "Unknown JS action: ";
    if (effects.errors.empty())
        return reasonFor(body);
    auto const& line = effects.errors.front();
    if (line.starts_with(unknown)) {
        auto const name = line.substr(unknown.size());
        return { "브리지에 이런 동작이 없습니다: " + name, "the bridge has no action " + name };
    }
    auto const* const message = body.dictionary();
    auto const* const value = message ? message->find("value") : nullptr;
    if (value && value->isNull())
        return { "null은 저장할 수 없습니다. removeItem을 쓰세요", "null cannot be stored: use removeItem" };
    return { line, line };
}

Text done(Dictionary const& message, Effects const& effects)
{
    auto const action = textAt(message, "action");
    auto const key = textAt(message, "key");
    if (effects.action) {
        auto const* const data = message.find("data");
        auto const given = data && data->text() ? lineOf(*data->text(), mostQuoted) : "";
        return { "앱의 동작을 불렀습니다" + (given.empty() ? ", 데이터 없이" : ": " + given),
            "the app's action was called " + (given.empty() ? "without data" : "with " + given) };
    }
    if (action == "close")
        return { "이벤트를 보내고 화면을 닫습니다", "events are uploaded, and the screen closes" };
    if (action == "setItem") {
        auto const* const expire = message.find("expire");
        if (!expire || !expire->number())
            return { key + ": 기한 없이 저장했습니다", key + " is stored without expiry" };
        auto const duration = durationText(*expire->number());
        return { key + ": " + duration.korean + " 동안 저장했습니다", key + " is stored for " + duration.english };
    }
    if (action == "removeItem")
        return { key + ": 지웠습니다", key + " is removed" };
    if (action == "saveEvent")
        return { "이벤트가 대기열에 있습니다", "the event is queued" };
    if (action == "setFooterVisible") {
        auto const* const visible = message.find("visible");
        return visible && visible->boolean() == true ? Text { "바닥글이 보입니다", "the footer is shown" }
                                                     : Text { "바닥글을 숨겼습니다", "the footer is hidden" };
    }
    return { "처리했습니다", "done" };
}

// The kind that JSON has no form for, somewhere in the value.
std::optional<Text> strangeToJson(Value const& value)
{
    if (value.kind() == Kind::Date || value.kind() == Kind::Data)
        return nameOf(value.kind());
    if (auto const number = value.number(); number && !std::isfinite(*number))
        return Text { platform::numberText(value), platform::numberText(value) };
    std::optional<Text> found;
    if (auto const* const array = value.array()) {
        for (auto const& element : *array)
            found = found ? found : strangeToJson(element);
    }
    if (auto const* const dictionary = value.dictionary()) {
        for (auto const& [key, member] : *dictionary)
            found = found ? found : strangeToJson(member);
    }
    return found;
}

std::optional<Text> warningFor(Dictionary const& message)
{
    auto const action = textAt(message, "action");
    auto const* const expire = message.find("expire");
    if (action == "setItem" && expire && !expire->number() && !expire->isNull()) {
        auto const kind = nameOf(expire->kind());
        return Text { "기한이 숫자가 아니라서 (" + kind.korean + ") 값이 만료되지 않습니다",
            "the expiry is " + kind.english + ", no number: the value never expires" };
    }
    auto const* const data = message.find(action == "setItem" ? "value" : "data");
    if (!data)
        return std::nullopt;
    if (action == "invokeCustomAction" && !data->text() && !data->isNull()) {
        auto const kind = nameOf(data->kind());
        return Text { "동작은 문자열만 받습니다: " + kind.korean,
            "an action takes text only, and this is " + kind.english };
    }
    auto const strange = action == "setItem" || action == "saveEvent" ? strangeToJson(*data) : std::nullopt;
    if (!strange)
        return std::nullopt;
    if (action == "setItem")
        return Text { "JSON에 없는 값이 있어서 null로 읽힙니다: " + strange->korean,
            "this reads back as null, because JSON cannot hold " + strange->english };
    return Text { "JSON에 없는 값이 있어서 이 이벤트와 뒤의 이벤트를 보낼 수 없습니다: " + strange->korean,
        "this event stops its own upload and all later ones, because JSON cannot hold " + strange->english };
}

}

Outcome judge(Value const& body, Effects const& effects)
{
    auto const* const message = body.dictionary();
    if (!message || (!effects.answer && !effects.action && !effects.didChange))
        return { .verdict = Verdict::Dropped, .explanation = dropped(body, effects) };
    if (effects.answer) {
        auto const answer = shortened(*effects.answer, mostQuoted);
        return { .verdict = Verdict::Answered, .explanation = { "응답: " + answer, "answered with " + answer } };
    }
    return { .verdict = Verdict::Done, .explanation = done(*message, effects), .warning = warningFor(*message) };
}

}
