#include "tests/contract/ApplicationContract.h"
#include "tests/contract/GestureContract.h"
#include "tests/contract/PlatformContract.h"
#include "tests/contract/ViewContract.h"
#include "tests/contract/ViewControllerContract.h"
#include "tests/contract/WebViewContract.h"
#include "tests/support/gtk/GtkHarness.h"

namespace zelvora::tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, ViewContract, GtkHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, ViewControllerContract, GtkHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, GestureContract, GtkHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, WebViewContract, GtkHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, ApplicationContract, GtkHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, PlatformContract, GtkHarness);

}
