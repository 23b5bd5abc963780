#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <utility>
#include <vector>

namespace zelvora::platform {

namespace {

// Compares containers without recursion, however deep a page nested them: a container inside a container waits for its
// turn.
class EqualityCheck final {
public:
    /// False if the two differ already; the contents of containers are left to `areRestEqual`.
    bool check(Value const& a, Value const& b)
    {
        if (a.kind() != b.kind())
            return false;
        switch (a.kind()) {
        case Value::Kind::Null:
            return true;
        case Value::Kind::Boolean:
            return a.boolean() == b.boolean();
        case Value::Kind::Number:
            return a.largeInteger() == b.largeInteger() && a.number() == b.number();
        case Value::Kind::Text:
            return *a.text() == *b.text();
        case Value::Kind::Date:
            return a.date() == b.date();
        case Value::Kind::Data:
            return *a.data() == *b.data();
        case Value::Kind::Array:
        case Value::Kind::Dictionary:
            m_waiting.emplace_back(&a, &b);
            return true;
        }
        std::unreachable();
    }

    bool check(Array const& a, Array const& b)
    {
        if (a.size() != b.size())
            return false;
        auto other = b.begin();
        for (auto const& element : a) {
            if (!check(element, *other))
                return false;
            ++other;
        }
        return true;
    }

    bool check(Dictionary const& a, Dictionary const& b)
    {
        if (a.size() != b.size())
            return false;
        auto other = b.begin();
        for (auto const& [key, value] : a) {
            if (key != other->first || !check(value, other->second))
                return false;
            ++other;
        }
        return true;
    }

    bool areRestEqual()
    {
        while (!m_waiting.empty()) {
            auto const [a, b] = m_waiting.back();
            m_waiting.pop_back();
            auto const areEqual =
                a->array() ? check(*a->array(), *b->array()) : check(*a->dictionary(), *b->dictionary());
            if (!areEqual)
                return false;
        }
        return true;
    }

private:
    std::vector<std::pair<Value const*, Value const*>> m_waiting;
};

template<typename Compared>
bool areEqual(Compared const& a, Compared const& b)
{
    EqualityCheck equality;
    return equality.check(a, b) && equality.areRestEqual();
}

}

bool Value::operator==(Value const& other) const
{
    return areEqual(*this, other);
}

bool Array::operator==(Array const& other) const
{
    return areEqual(*this, other);
}

bool Dictionary::operator==(Dictionary const& other) const
{
    return areEqual(*this, other);
}

}
