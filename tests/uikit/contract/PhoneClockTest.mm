#include "ZelvoraAdapters/uikit/Foundation/Clock.h"
#include "tests/contract/ClockContract.h"
#include "tests/contract/MovedWallClock.h"

namespace zelvora::tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Phone, ClockContract, MovedWallClock<uikit::Clock>);

}
