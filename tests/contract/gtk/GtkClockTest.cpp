#include "ZelvoraAdapters/gtk/Foundation/Clock.h"
#include "ZelvoraContract/ClockContract.h"
#include "ZelvoraContract/MovedWallClock.h"

namespace zelvora::tests {

INSTANTIATE_TYPED_TEST_SUITE_P(Gtk, ClockContract, MovedWallClock<gtk::Clock>);

}
