#include "ZelvoraContract/ApplicationContract.h"
#include "ZelvoraContract/GestureContract.h"
#include "ZelvoraContract/PlatformContract.h"
#include "ZelvoraContract/ViewContract.h"
#include "ZelvoraContract/ViewControllerContract.h"
#include "ZelvoraContract/WebViewContract.h"
#include "tests/support/gtk/GtkHarness.h"

namespace zelvora::tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, ViewContract, GtkHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, ViewControllerContract, GtkHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, GestureContract, GtkHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, WebViewContract, GtkHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, ApplicationContract, GtkHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, PlatformContract, GtkHarness);

}
