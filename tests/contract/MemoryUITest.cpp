#include "tests/contract/ApplicationContract.h"
#include "tests/contract/GestureContract.h"
#include "tests/contract/MemoryHarness.h"
#include "tests/contract/ViewContract.h"
#include "tests/contract/ViewControllerContract.h"
#include "tests/contract/WebViewContract.h"

namespace zelvora::tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, ViewContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, ViewControllerContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, GestureContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, WebViewContract, MemoryHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, ApplicationContract, MemoryHarness);

}
