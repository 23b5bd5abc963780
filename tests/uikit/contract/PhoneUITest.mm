#include "ZelvoraContract/ApplicationContract.h"
#include "ZelvoraContract/GestureContract.h"
#include "ZelvoraContract/PlatformContract.h"
#include "ZelvoraContract/ViewContract.h"
#include "ZelvoraContract/ViewControllerContract.h"
#include "ZelvoraContract/WebViewContract.h"
#include "tests/uikit/contract/PhoneHarness.h"

namespace zelvora::tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Phone, ViewContract, PhoneHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Phone, ViewControllerContract, PhoneHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Phone, GestureContract, PhoneHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Phone, WebViewContract, PhoneHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Phone, ApplicationContract, PhoneHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Phone, PlatformContract, PhoneHarness);

}
