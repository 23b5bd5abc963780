#include "examples/host/WatchedPlatform.h"

#include "ZelvoraAdapters/gtk/Platform.h"

#include <utility>

namespace zelvora::examples {

WatchedPlatform::WatchedPlatform(gtk::HostOptions options)
    : ForwardingPlatform(std::make_unique<gtk::Platform>(std::move(options)))
{
}

void WatchedPlatform::Session::dataTask(platform::URLRequest request, Completion completion)
{
    ++inProgress;
    // A platform is never destroyed once it is installed.
    auto counted = [this, completion = std::move(completion)](std::expected<Answer, platform::Error> answer) mutable {
        completion(std::move(answer));
        --inProgress;
    };
    owner.target().urlSession().dataTask(std::move(request), std::move(counted));
}

}
