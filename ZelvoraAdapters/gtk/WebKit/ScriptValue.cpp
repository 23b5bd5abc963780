#include "ZelvoraAdapters/gtk/WebKit/ScriptValue.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraAdapters/gtk/WebKit/ScriptTexts.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
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

/// What the writer's numbers mean. Some are followed by one more number.
enum class Kind : std::uint8_t { Null, False, True, Number, Date, Text, Array, Dictionary, Key, End, Reference };

// Reading a value member by member would call into the engine for each. This function writes the whole value in one
// call, as numbers and one text: for each value its kind, then a number, the length of a text, or the size and the
// contents of a container and its end. A stack of containers replaces recursion. An object that occurs in several
// places, or in itself, is written once, and after that as the number of its container. Lone surrogates are replaced,
// and a line break between the texts keeps the halves of a pair apart.
//
// One call into the engine costs about a tenth of what receiving a small message costs. So for a small message the
// function returns the text alone, and leaves the few numbers in an array that this adapter reads without a call. They
// are copied there at the end: if the function wrote every number to an array whose data was asked for, a large message
// would take three times as long. For a large message the result is an array of the numbers and the text. The result is
// null if the message has more values than are allowed.
//
// A page may give an object another prototype, by a member named "__proto__", but not the prototype of dates.
constexpr char const* writerSource = R"((most => {
    const few = new Float64Array(128);
    const own = new Float64Array(few.length);
    const write = posted => {
        let left = most;
        let numbers = own;
        let used = 0;
        const texts = [];
        const known = new Map();
        const outer = [];
        let container = [posted];
        let keys = null;
        let size = 1;
        let index = 0;
        for (;;) {
            if (used + 5 > numbers.length) {
                const larger = new Float64Array(numbers.length * 2);
                larger.set(numbers);
                numbers = larger;
            }
            if (index === size) {
                if (!outer.length)
                    break;
                numbers[used++] = 9;
                ({ container, keys, size, index } = outer.pop());
                continue;
            }
            const key = keys ? keys[index] : index;
            const value = container[key];
            ++index;
            if (keys) {
                if (value === undefined)
                    continue;
                numbers[used++] = 8;
                numbers[used++] = key.length;
                texts.push(key);
            }
            if (!left--)
                return null;
            switch (typeof value) {
            case 'boolean':
                numbers[used++] = value ? 2 : 1;
                continue;
            case 'number':
                numbers[used++] = 3;
                numbers[used++] = value;
                continue;
            case 'string':
                numbers[used++] = 5;
                numbers[used++] = value.length;
                texts.push(value);
                continue;
            case 'object':
                break;
            default:
                numbers[used++] = 0;
                continue;
            }
            if (value === null) {
                numbers[used++] = 0;
                continue;
            }
            if (Object.getPrototypeOf(value) === Date.prototype) {
                numbers[used++] = 4;
                numbers[used++] = value.getTime();
                continue;
            }
            const number = known.get(value);
            if (number !== undefined) {
                numbers[used++] = 10;
                numbers[used++] = number;
                continue;
            }
            known.set(value, known.size);
            const isArray = Array.isArray(value);
            if ((isArray || ArrayBuffer.isView(value)) && value.length > left)
                return null;
            outer.push({ container, keys, size, index });
            container = value;
            keys = isArray ? null : Object.keys(value);
            size = keys ? keys.length : value.length;
            index = 0;
            if (size > left)
                return null;
            numbers[used++] = keys ? 7 : 6;
            numbers[used++] = size;
        }
        const text = texts.join('\n').toWellFormed();
        if (numbers !== own)
            return [numbers.subarray(0, used), text];
        few.set(own);
        return text;
    };
    return [write, few];
}))";

std::span<double const> numbersIn(JSCValue* array)
{
    gsize size = 0;
    auto const* const data = static_cast<double const*>(jsc_value_typed_array_get_data(array, &size));
    return { data, size };
}

/// The function, and where it leaves a few numbers.
struct Writer {
    GObjectPointer<JSCValue> write;
    /// Valid while the function exists.
    std::span<double const> few;
};

Writer makeWriter(JSCContext* context)
{
    auto const maker = adopt(jsc_context_evaluate(context, writerSource, -1));
    auto const made =
        adopt(jsc_value_function_call(maker.get(), G_TYPE_DOUBLE, static_cast<double>(mostPostedValues), G_TYPE_NONE));
    auto write = adopt(jsc_value_object_get_property_at_index(made.get(), 0));
    auto const few = adopt(jsc_value_object_get_property_at_index(made.get(), 1));
    // The context keeps it, under a name: a reference held here would keep the context alive forever.
    jsc_context_set_value(context, "zelvoraWriteValue", write.get());
    return { std::move(write), numbersIn(few.get()) };
}

/// The engine converts all messages in one context, and drops the context when no message has come for a while. The
/// object that stands for the context changes at times, but two values that exist at the same time have the same one.
Writer writerIn(JSCContext* context)
{
    struct Last {
        GObjectPointer<JSCWeakValue> write;
        std::span<double const> few;
    };
    // Never destroyed: the engine may be gone when the process ends.
    static auto& s_last = *new Last;
    auto last = adopt(s_last.write ? jsc_weak_value_get_value(s_last.write.get()) : nullptr);
    if (last && jsc_value_get_context(last.get()) == context)
        return { std::move(last), s_last.few };
    auto writer = makeWriter(context);
    s_last = { adopt(jsc_weak_value_new(writer.write.get())), writer.few };
    return writer;
}

/// Builds the value that the numbers and texts describe.
class Builder final {
public:
    Builder(std::span<double const> numbers, std::string_view text) : m_numbers(numbers), m_texts(text) { }

    /// Absent if the value is too large: a few objects that contain each other twice expand to any size.
    [[nodiscard]] std::optional<Value> build()
    {
        while (!m_result && !m_isTooLarge)
            add(static_cast<Kind>(takeCount()));
        return m_isTooLarge ? std::nullopt : std::move(m_result);
    }

private:
    /// The number of values that this one consists of; shared ones count each time.
    struct Counted {
        Value value;
        std::size_t count = 1;
    };

    struct Container {
        bool isDictionary = false;
        std::size_t number = 0;
        std::size_t count = 1;
        std::string key {};
        std::vector<Value> elements {};
        Dictionary::Entries entries {};
    };

    double takeNumber()
    {
        auto const number = m_numbers.front();
        m_numbers = m_numbers.subspan(1);
        return number;
    }

    std::size_t takeCount() { return static_cast<std::size_t>(takeNumber()); }
    std::string takeText() { return std::string(m_texts.take(takeCount())); }

    void add(Kind kind)
    {
        switch (kind) {
        case Kind::Null:
            return put({ Null {} });
        case Kind::False:
        case Kind::True:
            return put({ kind == Kind::True });
        case Kind::Number:
            return put({ takeNumber() });
        case Kind::Date:
            return put({ Date { takeNumber() / 1000 } });
        case Kind::Text:
            return put({ takeText() });
        case Kind::Array:
        case Kind::Dictionary:
            return begin(kind);
        case Kind::Key:
            m_open.back().key = takeText();
            return;
        case Kind::End:
            return end();
        case Kind::Reference:
            // A container that is not complete yet contains itself: a null marker ends the cycle.
            return put(m_containers[takeCount()]);
        }
    }

    void begin(Kind kind)
    {
        auto& container = m_open.emplace_back(kind == Kind::Dictionary, m_containers.size());
        auto const size = takeCount();
        // Members that are undefined count in the size, but are left out.
        constexpr std::size_t mostReservedEntries = 16;
        if (container.isDictionary)
            container.entries.reserve(std::min(size, mostReservedEntries));
        else
            container.elements.reserve(size);
        m_containers.emplace_back();
    }

    void end()
    {
        auto container = std::move(m_open.back());
        m_open.pop_back();
        auto& made = m_containers[container.number];
        made.count = container.count;
        made.value = container.isDictionary ? Value(Dictionary(std::move(container.entries)))
                                            : Value(Array(std::move(container.elements)));
        put(made);
    }

    void put(Counted counted)
    {
        if (m_open.empty()) {
            m_result = std::move(counted.value);
            return;
        }
        auto& container = m_open.back();
        container.count += counted.count;
        m_isTooLarge |= container.count > mostPostedValues;
        if (container.isDictionary)
            container.entries.emplace_back(std::move(container.key), std::move(counted.value));
        else
            container.elements.push_back(std::move(counted.value));
    }

    std::span<double const> m_numbers;
    ScriptTexts m_texts;
    std::vector<Container> m_open;
    // In the order in which they began.
    std::vector<Counted> m_containers;
    std::optional<Value> m_result;
    bool m_isTooLarge = false;
};

std::optional<Value> build(JSCValue* text, std::span<double const> numbers)
{
    GBytesPointer const bytes(jsc_value_to_string_as_bytes(text));
    gsize size = 0;
    auto const* const data = static_cast<char const*>(g_bytes_get_data(bytes.get(), &size));
    return Builder(numbers, { data, size }).build();
}

}

std::expected<Value, std::string> toValue(JSCValue* scriptValue)
{
    auto* context = jsc_value_get_context(scriptValue);
    auto const writer = writerIn(context);
    auto const written = adopt(jsc_value_function_call(writer.write.get(), JSC_TYPE_VALUE, scriptValue, G_TYPE_NONE));
    std::optional<Value> value;
    if (jsc_value_is_string(written.get())) {
        value = build(written.get(), writer.few);
    } else if (jsc_value_is_array(written.get())) {
        auto const numbers = adopt(jsc_value_object_get_property_at_index(written.get(), 0));
        auto const text = adopt(jsc_value_object_get_property_at_index(written.get(), 1));
        value = build(text.get(), numbersIn(numbers.get()));
    } else if (!jsc_value_is_null(written.get())) {
        jsc_context_clear_exception(context);
        return std::unexpected("the engine cannot read it");
    }
    if (!value)
        return std::unexpected("it contains more than " + std::to_string(mostPostedValues) + " values");
    return *std::move(value);
}

}
