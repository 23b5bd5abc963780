#include "ZelvoraContract/ViewControllerContract.h"
#include "tests/skeleton/ScreenHarness.h"

namespace zelvora::tests {

INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonViewController, ViewControllerContract, SkeletonScreen);

}
