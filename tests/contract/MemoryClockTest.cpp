#include "ZelvoraAdapters/memory/Foundation/Clock.h"
#include "ZelvoraContract/ClockContract.h"

namespace zelvora::tests {

namespace {

class MemoryTime final {
public:
    platform::Clock& clock() { return m_clock; }
    void setSystemClock(platform::Date now) { m_clock.set(now); }

private:
    memory::Clock m_clock;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, ClockContract, MemoryTime);

}
