#pragma once

#include "ZelvoraAdapters/memory/ForwardingPlatform.h"
#include "ZelvoraAdapters/memory/Platform.h"

#include <memory>
#include <utility>

namespace zelvora::tests {

/// A forwarding platform that owns a platform in memory. Derived classes replace single services, to watch a call while
/// it is made or to run on real threads.
class ForwardingPlatform : public memory::ForwardingPlatform {
public:
    explicit ForwardingPlatform(memory::Options options = {})
        : memory::ForwardingPlatform(std::make_unique<memory::Platform>(std::move(options)))
        , memory(static_cast<memory::Platform&>(target()))
    {
    }

    memory::Platform& memory;
};

/// Makes a platform of this kind, installs it and returns it.
template<typename Installed, typename... Arguments>
Installed& install(Arguments&&... arguments)
{
    auto platform = std::make_unique<Installed>(std::forward<Arguments>(arguments)...);
    auto& installed = *platform;
    platform::Platform::install(std::move(platform));
    return installed;
}

}
