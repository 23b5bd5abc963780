#pragma once

#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"

#include <glib-object.h>

#include <list>
#include <memory>
#include <string>

namespace zelvora::examples {

/// Remembers the objects of every opened shop, without keeping them alive, and counts those that still live. Main
/// thread.
class LiveObjects final {
public:
    /// Remembers a view of the SDK, its container and the engine's view in it.
    void add(std::string round, std::shared_ptr<ZelvoraWebView> const& view);
    [[nodiscard]] int count();
    /// What still lives, with the rounds it is from.
    [[nodiscard]] std::string describe();

private:
    class EngineView final {
    public:
        explicit EngineView(gpointer object) { g_weak_ref_init(&m_reference, object); }
        EngineView(EngineView const&) = delete;
        EngineView& operator=(EngineView const&) = delete;
        ~EngineView() { g_weak_ref_clear(&m_reference); }

        [[nodiscard]] bool lives();

    private:
        GWeakRef m_reference {};
    };

    struct Opening {
        std::string round;
        std::weak_ptr<void> view;
        std::weak_ptr<void> container;
        std::weak_ptr<void> webView;
        std::unique_ptr<EngineView> engine;

        [[nodiscard]] int count() const;
        [[nodiscard]] std::string describe() const;
    };

    std::list<Opening> m_openings;
};

}
