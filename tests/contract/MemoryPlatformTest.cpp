#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraContract/PlatformContract.h"

namespace zelvora::tests {

namespace {

class MemoryPlatform final {
public:
    bool runUntil(std::function<bool()> const& done)
    {
        // Its queues have no threads: the test's are the system's.
        runOnThreads(1, [this](int) { m_platform.globalQueue().runAll(); });
        m_platform.mainQueue().runAll();
        return done();
    }

private:
    memory::Platform& m_platform = memory::install();
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, PlatformContract, MemoryPlatform);

}
