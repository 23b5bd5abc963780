#pragma once

#include "ZelvoraAdapters/gtk/UIKit/Stage.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <gtk/gtk.h>

#include <memory>
#include <optional>
#include <vector>

namespace zelvora::gtk {

class UIViewControllerPeer;

/// The screens that cover a window's content, each presented by the one below it. It stands between the window and the
/// child that the host gave it, keeps the screens, and goes with the window. Main thread.
class WindowPresentations final {
public:
    /// Made at the first call for the window.
    [[nodiscard]] static WindowPresentations& of(GtkWindow* window);

    WindowPresentations(WindowPresentations const&) = delete;
    WindowPresentations& operator=(WindowPresentations const&) = delete;
    ~WindowPresentations() = default;

    void present(UIViewControllerPeer& presenter, std::shared_ptr<platform::UIViewController> const& presented,
        platform::Animated animated);
    void dismiss(UIViewControllerPeer& presenter, platform::Animated animated);

    /// Puts another child in the place of the window's own.
    void setContent(GtkWidget* content);

private:
    explicit WindowPresentations(GtkWindow* window);

    using Level = std::size_t;

    void standInWindow();
    void replaceContent(GtkWidget* content);
    [[nodiscard]] std::optional<Level> levelOf(UIViewControllerPeer const& peer) const;
    [[nodiscard]] GtkWidget* pageAt(Level level) const;
    void uncover(Level level, platform::Animated animated);
    void letGo(std::shared_ptr<platform::UIViewController> const& controller);
    void tellDisappearance(Level level, platform::Animated animated);
    void tellAppearance(Level level);
    void close();

    GtkWindow* m_window;
    // Owned by the stage, as its child.
    GtkWidget* m_content = nullptr;
    std::vector<std::shared_ptr<platform::UIViewController>> m_presented;
    Stage m_stage;
};

}
