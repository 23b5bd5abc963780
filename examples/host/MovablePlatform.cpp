#include "examples/host/MovablePlatform.h"

#include "ZelvoraAdapters/gtk/Platform.h"

#include <utility>

namespace zelvora::examples {

MovablePlatform::MovablePlatform(gtk::HostOptions options)
    : ForwardingPlatform(std::make_unique<gtk::Platform>(std::move(options)))
{
}

platform::Date MovablePlatform::MovedClock::now() const
{
    return { owner.target().clock().now().timeIntervalSince1970 + ahead };
}

}
