#include "ZelvoraAdapters/skeleton/Foundation/Clock.h"

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraContract/ClockContract.h"

namespace zelvora::tests {

namespace {

using skeleton::missing;

class SkeletonTime final {
public:
    platform::Clock& clock() { return m_clock; }
    void setSystemClock(platform::Date) { missing("SkeletonTime::setSystemClock"); }

private:
    skeleton::Clock m_clock;
};

}

INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonClock, ClockContract, SkeletonTime);

}
