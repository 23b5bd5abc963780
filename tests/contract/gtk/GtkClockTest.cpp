#include "ZelvoraAdapters/gtk/Foundation/Clock.h"
#include "tests/contract/ClockContract.h"
#include "tests/contract/MovedWallClock.h"

namespace zelvora::tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, ClockContract, MovedWallClock<gtk::Clock>);

}
