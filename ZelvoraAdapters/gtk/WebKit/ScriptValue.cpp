#include "ZelvoraAdapters/gtk/WebKit/ScriptValue.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/WebKit/ScriptText.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zelvora::gtk {

using platform::Array;
using platform::Date;
using platform::Dictionary;
using platform::Null;
using platform::Value;

namespace {

// Reading a value member by member would call into the engine for each, and C strings end at a NUL. This function
// writes the whole value in one call, one line per value: a letter for the kind, then a number, a count or a quoted
// string; a container's contents follow it. A work list replaces recursion. An object that occurs in several places, or
// in itself, is written once, and after that as the number of its container.
constexpr char const* writerSource = R"((function(posted) {
    const lines = [];
    const open = [posted];
    const containers = new Map();
    while (open.length) {
        const value = open.pop();
        switch (typeof value) {
        case 'boolean': lines.push(value ? 't' : 'f'); continue;
        case 'number': lines.push('d' + (Object.is(value, -0) ? '-0' : value)); continue;
        case 'string': lines.push('s' + JSON.stringify(value)); continue;
        case 'object': break;
        default: lines.push('n'); continue;
        }
        if (value === null) {
            lines.push('n');
        } else if (Object.prototype.toString.call(value) === '[object Date]') {
            lines.push('D' + value.getTime());
        } else if (containers.has(value)) {
            lines.push('r' + containers.get(value));
        } else if (Array.isArray(value)) {
            containers.set(value, containers.size);
            lines.push('a' + value.length);
            for (let index = value.length; index--;)
                open.push(value[index]);
        } else {
            containers.set(value, containers.size);
            const keys = Object.keys(value).filter(key => value[key] !== undefined);
            lines.push('o' + keys.length);
            for (let index = keys.length; index--;)
                open.push(value[keys[index]], keys[index]);
        }
    }
    return lines.join('\n');
}))";

constexpr char const* writerName = "zelvoraWriteValue";

/// The writer is stored in the engine's context under a name: a reference held here would keep the context alive
/// forever.
GObjectPointer<JSCValue> writerIn(JSCContext* context)
{
    auto writer = adopt(jsc_context_get_value(context, writerName));
    if (jsc_value_is_function(writer.get()))
        return writer;
    writer = adopt(jsc_context_evaluate(context, writerSource, -1));
    jsc_context_set_value(context, writerName, writer.get());
    return writer;
}

/// Builds the value that the lines describe.
class Builder final {
public:
    /// Returns false once the value is too large: a few objects that contain each other twice expand to any size.
    [[nodiscard]] bool add(std::string_view line)
    {
        auto const rest = line.substr(1);
        switch (line.front()) {
        case 't':
        case 'f':
            complete({ line.front() == 't' });
            break;
        case 'd':
            complete({ scriptNumber(rest) });
            break;
        case 's':
            addText(unquoteScriptText(rest));
            break;
        case 'D':
            complete({ Date { scriptNumber(rest) / 1000 } });
            break;
        case 'a':
        case 'o':
            begin(line.front() == 'o', static_cast<std::size_t>(scriptNumber(rest)));
            break;
        case 'r':
            // A container that is not complete yet contains itself: a null marker ends the cycle.
            complete(m_containers[static_cast<std::size_t>(scriptNumber(rest))]);
            break;
        default:
            complete({ Null {} });
        }
        return !m_isTooLarge;
    }

    [[nodiscard]] std::optional<Value> take() { return std::move(m_result); }

private:
    static constexpr std::size_t mostValues = 10'000'000;

    /// The number of values that this one consists of; shared ones count each time.
    struct Counted {
        Value value;
        std::size_t count = 1;
    };

    struct Container {
        bool isDictionary = false;
        std::size_t missing = 0;
        std::size_t number = 0;
        std::size_t count = 1;
        std::optional<std::string> key {};
        std::vector<Value> elements {};
        Dictionary::Entries entries {};
    };

    void begin(bool isDictionary, std::size_t size)
    {
        m_open.push_back({ isDictionary, size, m_containers.size() });
        m_containers.push_back({ Null {} });
        completeContainers();
    }

    void addText(std::string text)
    {
        bool const isKey = !m_open.empty() && m_open.back().isDictionary && !m_open.back().key;
        if (isKey)
            m_open.back().key = std::move(text);
        else
            complete({ std::move(text) });
    }

    void complete(Counted counted)
    {
        put(std::move(counted));
        completeContainers();
    }

    void put(Counted counted)
    {
        if (m_open.empty()) {
            m_result = std::move(counted.value);
            return;
        }
        auto& container = m_open.back();
        --container.missing;
        container.count += counted.count;
        m_isTooLarge |= container.count > mostValues;
        if (container.isDictionary)
            container.entries.emplace_back(*std::exchange(container.key, std::nullopt), std::move(counted.value));
        else
            container.elements.push_back(std::move(counted.value));
    }

    void completeContainers()
    {
        while (!m_open.empty() && m_open.back().missing == 0) {
            auto container = std::move(m_open.back());
            m_open.pop_back();
            auto& made = m_containers[container.number];
            made.count = container.count;
            made.value = container.isDictionary ? Value(Dictionary(std::move(container.entries)))
                                                : Value(Array(container.elements));
            put(made);
        }
    }

    std::vector<Container> m_open;
    // In the order in which they began.
    std::vector<Counted> m_containers;
    std::optional<Value> m_result;
    bool m_isTooLarge = false;
};

}

std::optional<Value> toValue(JSCValue* scriptValue)
{
    auto* context = jsc_value_get_context(scriptValue);
    auto const writer = writerIn(context);
    auto const written = adopt(jsc_value_function_call(writer.get(), JSC_TYPE_VALUE, scriptValue, G_TYPE_NONE));
    if (!jsc_value_is_string(written.get())) {
        jsc_context_clear_exception(context);
        return std::nullopt;
    }
    GTextPointer const text(jsc_value_to_string(written.get()));
    std::string_view lines(text.get());
    Builder builder;
    while (!lines.empty()) {
        auto const end = std::min(lines.find('\n'), lines.size());
        if (!builder.add(lines.substr(0, end)))
            return std::nullopt;
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
    return builder.take();
}

}
