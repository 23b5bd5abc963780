#include "ZelvoraAdapters/gtk/Foundation/Clock.h"

#include <glib.h>

namespace zelvora::gtk {

platform::Date Clock::now() const
{
    return { .timeIntervalSince1970 = static_cast<double>(g_get_real_time()) / G_USEC_PER_SEC };
}

}
