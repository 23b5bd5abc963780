#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"

#include <gio/gio.h>

#include <functional>

namespace zelvora::gtk {

/// Hears the system's warnings of low memory. Main thread.
class MemoryWarning final {
public:
    explicit MemoryWarning(std::function<void()> didWarn);
    MemoryWarning(MemoryWarning const&) = delete;
    MemoryWarning& operator=(MemoryWarning const&) = delete;
    ~MemoryWarning();

private:
    std::function<void()> m_didWarn;
    GObjectPointer<GMemoryMonitor> m_monitor;
};

}
