#include "ZelvoraContract/ViewContract.h"
#include "tests/skeleton/ScreenHarness.h"

namespace zelvora::tests {

INSTANTIATE_TYPED_TEST_SUITE_P(SkeletonView, ViewContract, SkeletonScreen);

}
