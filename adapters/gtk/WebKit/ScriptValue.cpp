#include "adapters/gtk/WebKit/ScriptValue.h"

#include "adapters/gtk/GLib/Pointers.h"
#include "adapters/gtk/WebKit/ScriptText.h"
#include "platform/Foundation/Array.h"
#include "platform/Foundation/Dictionary.h"

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

// Reading a value member by member costs a crossing into the engine for each, and its C texts end at a NUL. This writes
// the whole value as lines in one call: a letter for the kind, then a number, a count or a quoted text; a container's
// contents follow it. It keeps a list of its own in place of recursion.
constexpr char const* writerSource = R"((function(posted) {
    const lines = [];
    const open = [posted];
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
        } else if (Array.isArray(value)) {
            lines.push('a' + value.length);
            for (let index = value.length; index--;)
                open.push(value[index]);
        } else {
            const keys = Object.keys(value).filter(key => value[key] !== undefined);
            lines.push('o' + keys.length);
            for (let index = keys.length; index--;)
                open.push(value[keys[index]], keys[index]);
        }
    }
    return lines.join('\n');
}))";

constexpr char const* writerName = "zelvoraWriteValue";

/// The writer stays in the engine's context under a name: a reference held here would keep the context for good.
GObjectPointer<JSCValue> writerIn(JSCContext* context)
{
    auto writer = adopt(jsc_context_get_value(context, writerName));
    if (jsc_value_is_function(writer.get()))
        return writer;
    writer = adopt(jsc_context_evaluate(context, writerSource, -1));
    jsc_context_set_value(context, writerName, writer.get());
    return writer;
}

/// Makes the value that lines describe.
class Builder final {
public:
    void add(std::string_view line)
    {
        auto const rest = line.substr(1);
        switch (line.front()) {
        case 't':
        case 'f':
            return complete(line.front() == 't');
        case 'd':
            return complete(scriptNumber(rest));
        case 's':
            return addText(unquoteScriptText(rest));
        case 'D':
            return complete(Date { scriptNumber(rest) / 1000 });
        case 'a':
        case 'o':
            return begin(line.front() == 'o', static_cast<std::size_t>(scriptNumber(rest)));
        default:
            return complete(Null {});
        }
    }

    [[nodiscard]] std::optional<Value> take() { return std::move(m_result); }

private:
    struct Container {
        bool isDictionary = false;
        std::size_t missing = 0;
        std::optional<std::string> key {};
        std::vector<Value> elements {};
        Dictionary::Entries entries {};
    };

    void begin(bool isDictionary, std::size_t count)
    {
        m_open.push_back({ isDictionary, count });
        completeContainers();
    }

    void addText(std::string text)
    {
        bool const isKey = !m_open.empty() && m_open.back().isDictionary && !m_open.back().key;
        if (isKey)
            m_open.back().key = std::move(text);
        else
            complete(std::move(text));
    }

    void complete(Value value)
    {
        put(std::move(value));
        completeContainers();
    }

    void put(Value value)
    {
        if (m_open.empty()) {
            m_result = std::move(value);
            return;
        }
        auto& container = m_open.back();
        --container.missing;
        if (container.isDictionary)
            container.entries.emplace_back(*std::exchange(container.key, std::nullopt), std::move(value));
        else
            container.elements.push_back(std::move(value));
    }

    void completeContainers()
    {
        while (!m_open.empty() && m_open.back().missing == 0) {
            auto container = std::move(m_open.back());
            m_open.pop_back();
            if (container.isDictionary)
                put(Dictionary(std::move(container.entries)));
            else
                put(Array(container.elements));
        }
    }

    std::vector<Container> m_open;
    std::optional<Value> m_result;
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
        builder.add(lines.substr(0, end));
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
    return builder.take();
}

}
