#include "ZelvoraContract/WebViewContract.h"
#include "tests/uikit/live/LiveHarness.h"

namespace zelvora::tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Live, WebViewContract, LiveHarness);

}
