#include "ZelvoraAdapters/gtk/os/MemoryWarning.h"

#include <utility>

namespace zelvora::gtk {

MemoryWarning::MemoryWarning(std::function<void()> didWarn)
    : m_didWarn(std::move(didWarn))
    , m_monitor(adopt(g_memory_monitor_dup_default()))
{
    auto const warned = +[](MemoryWarning* self) { self->m_didWarn(); };
    g_signal_connect_swapped(m_monitor.get(), "low-memory-warning", G_CALLBACK(warned), this);
}

MemoryWarning::~MemoryWarning()
{
    g_signal_handlers_disconnect_by_data(m_monitor.get(), this);
}

}
