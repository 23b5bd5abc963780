#include "tests/contract/ApplicationContract.h"
#include "tests/contract/GestureContract.h"
#include "tests/contract/PlatformContract.h"
#include "tests/contract/ViewContract.h"
#include "tests/contract/ViewControllerContract.h"
#include "tests/contract/WebViewContract.h"
#include "tests/uikit/contract/PhoneHarness.h"

namespace zelvora::tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Phone, ViewContract, PhoneHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Phone, ViewControllerContract, PhoneHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Phone, GestureContract, PhoneHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Phone, WebViewContract, PhoneHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Phone, ApplicationContract, PhoneHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Phone, PlatformContract, PhoneHarness);

}
