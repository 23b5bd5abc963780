#pragma once

#include "ZelvoraAdapters/gtk/UIKit/Stage.h"
#include "ZelvoraAdapters/shared/Screens/PresentationChain.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <gtk/gtk.h>

#include <memory>
#include <optional>

namespace zelvora::gtk {

class UIViewControllerPeer;

/// The screens that are presented over a window's content. It puts a stage between the window and the child that the
/// host gave it, keeps the screens, and is destroyed with the window. Main thread.
class WindowPresentations final : private shared::PresentationChain::Client {
public:
    /// Made by the first call for the window.
    [[nodiscard]] static WindowPresentations& of(GtkWindow* window);

    WindowPresentations(WindowPresentations const&) = delete;
    WindowPresentations& operator=(WindowPresentations const&) = delete;
    ~WindowPresentations() override = default;

    void present(UIViewControllerPeer& presenter, std::shared_ptr<platform::UIViewController> const& presented,
        platform::Animated animated);
    void dismiss(UIViewControllerPeer& presenter, platform::Animated animated);

    /// Ends what is presented and replaces the window's child.
    void setContent(GtkWidget* content);

private:
    using Level = shared::PresentationChain::Level;
    using Screen = shared::PresentationChain::Screen;

    explicit WindowPresentations(GtkWindow* window);

    void enterWindow();
    void replaceContent(GtkWidget* content);
    [[nodiscard]] std::optional<Level> levelOf(UIViewControllerPeer const& peer) const;
    [[nodiscard]] GtkWidget* pageAt(Level level) const;
    void close();
    void letGo(Screen const& screen);

    // shared::PresentationChain::Client
    void didAdd(Screen const&, platform::Animated) override { }
    void didRemove(Screen const& screen, platform::Animated animated) override;
    void contentWillDisappear(platform::Animated animated) override;
    void screenWillDisappear(platform::UIViewController& screen, platform::Animated animated) override;
    void show(Screen const& screen, Level presenter, platform::Animated animated) override;
    void uncover(Level level) override;
    void hide(Screen const& screen, platform::Animated animated) override;

    GtkWindow* m_window;
    // Owned by the stage, as its child.
    GtkWidget* m_content = nullptr;
    shared::PresentationChain m_chain { *this };
    Stage m_stage;
};

}
