#include "ZelvoraContract/ApplicationContract.h"
#include "ZelvoraContract/GestureContract.h"
#include "ZelvoraContract/MemoryHarness.h"
#include "ZelvoraContract/ViewContract.h"
#include "ZelvoraContract/ViewControllerContract.h"
#include "ZelvoraContract/WebViewContract.h"

namespace zelvora::tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, ViewContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, ViewControllerContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, GestureContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, WebViewContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, ApplicationContract, MemoryHarness);

}
