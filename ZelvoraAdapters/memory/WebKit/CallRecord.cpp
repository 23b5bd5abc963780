#include "ZelvoraAdapters/memory/WebKit/CallRecord.h"

#include <algorithm>

namespace zelvora::memory {

std::vector<std::string> CallRecord::of(std::initializer_list<void const*> objects) const
{
    std::vector<std::string> texts;
    for (auto const& call : m_calls) {
        if (std::ranges::find(objects, call.object) != objects.end())
            texts.push_back(call.text);
    }
    return texts;
}

void CallRecord::forget(void const* object)
{
    for (auto& call : m_calls) {
        if (call.object == object)
            call.object = nullptr;
    }
}

}
