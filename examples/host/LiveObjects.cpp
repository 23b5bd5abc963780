#include "examples/host/LiveObjects.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "examples/driving/engineOf.h"

#include <utility>

namespace zelvora::examples {

bool LiveObjects::EngineView::lives()
{
    auto const object = gtk::adopt(static_cast<GObject*>(g_weak_ref_get(&m_reference)));
    return object != nullptr;
}

int LiveObjects::Opening::count() const
{
    return static_cast<int>(!view.expired()) + static_cast<int>(!container.expired())
        + static_cast<int>(!webView.expired()) + static_cast<int>(engine->lives());
}

std::string LiveObjects::Opening::describe() const
{
    return "round " + round + ":" + (view.expired() ? "" : " view") + (container.expired() ? "" : " container")
        + (webView.expired() ? "" : " web view") + (engine->lives() ? " engine's view" : "");
}

void LiveObjects::add(std::string round, std::shared_ptr<ZelvoraWebView> const& view)
{
    m_openings.push_back({ .round = std::move(round),
        .view = view,
        .container = view->parentViewController(),
        .webView = view->subviews().front(),
        .engine = std::make_unique<EngineView>(engineOf(*view)) });
}

int LiveObjects::count()
{
    std::erase_if(m_openings, [](Opening const& opening) { return opening.count() == 0; });
    int living = 0;
    for (auto const& opening : m_openings)
        living += opening.count();
    return living;
}

std::string LiveObjects::describe()
{
    std::string text;
    for (auto const& opening : m_openings) {
        if (opening.count() > 0)
            text += (text.empty() ? "" : "; ") + opening.describe();
    }
    return text;
}

}
