#include "ZelvoraPlatform/Foundation/Dismantling.h"

#include <utility>
#include <vector>

namespace zelvora::platform {

void Dismantling::take(Value& value)
{
    auto const kind = value.kind();
    if (kind != Value::Kind::Array && kind != Value::Kind::Dictionary)
        return;

    static thread_local std::vector<Value>* s_waiting = nullptr;
    if (s_waiting) {
        s_waiting->push_back(std::exchange(value, Value()));
        return;
    }
    std::vector<Value> waiting;
    s_waiting = &waiting;
    waiting.push_back(std::exchange(value, Value()));
    while (!waiting.empty()) {
        auto const next = std::move(waiting.back());
        waiting.pop_back();
    }
    s_waiting = nullptr;
}

}
