#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UIView.h"

#include <optional>
#include <string>
#include <vector>

namespace zelvora::memory {

class Screen;

/// The size that a view has from its content; absent if constraints alone decide.
struct IntrinsicSize {
    /// In points.
    /// @{
    std::optional<double> width {};
    std::optional<double> height {};
    /// @}

    bool operator==(IntrinsicSize const&) const = default;
};

/// The native side of a view: it keeps what it was told and where the layout put it. Its calls are in the screen's
/// record under the owner's address.
class ZELVORA_API UIViewPeer final : public platform::UIView::Peer {
public:
    /// Made by the platform with each view. The screen must outlive it.
    UIViewPeer(Screen& screen, platform::UIView& owner, platform::CGRect frame);
    ~UIViewPeer() override;
    UIViewPeer(UIViewPeer const&) = delete;
    UIViewPeer& operator=(UIViewPeer const&) = delete;

    /// The peer of a view that was made while this adapter was installed; another view stops the process.
    [[nodiscard]] static UIViewPeer& of(platform::UIView const& view);

    /// In the superview, as of the latest layout.
    [[nodiscard]] platform::CGRect frame() const { return m_frame; }
    /// Places the view as a host does without constraints; it has an effect while the autoresizing mask is translated.
    void setFrame(platform::CGRect frame) { m_frame = m_ownFrame = frame; }

    /// As it was set last; absent if it never was, so that the view is transparent.
    [[nodiscard]] std::optional<platform::UIColor> backgroundColor() const { return m_backgroundColor; }
    /// Whether the view keeps its own frame: true at first.
    [[nodiscard]] bool translatesAutoresizingMaskIntoConstraints() const { return m_translates; }
    /// The size of the view's content; none at first. A change takes effect at the next layout.
    /// @{
    [[nodiscard]] IntrinsicSize intrinsicSize() const { return m_intrinsicSize; }
    void setIntrinsicSize(IntrinsicSize size) { m_intrinsicSize = size; }
    /// @}

    /// The view that this is the native side of.
    [[nodiscard]] platform::UIView& owner() const { return m_owner; }
    /// For the adapter itself: whether the layout gives the view the whole screen, as it does a controller's root view.
    void setFillsScreen(bool fills) { m_fillsScreen = fills; }
    /// For the adapter itself: lays out the tree of views that the owner is the root of.
    void layOutTree();
    /// See `Screen::ambiguities`: of the latest layout pass of that tree.
    [[nodiscard]] std::vector<std::string> const& ambiguities() const { return m_ambiguities; }

    // platform::UIView::Peer
    [[nodiscard]] platform::CGRect bounds() const override { return { 0, 0, m_frame.width, m_frame.height }; }
    void addSubview(platform::UIView& child) override;
    void removeSubview(platform::UIView& child) override;
    void bringSubviewToFront(platform::UIView& child) override;
    void setHidden(bool hidden) override;
    void setBackgroundColor(platform::UIColor color) override;
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates) override;
    void activate(platform::NSLayoutConstraint const& constraint) override;
    void deactivate(platform::NSLayoutConstraint const& constraint) override;
    void layoutIfNeeded() override;
    void addGestureRecognizer(platform::UIGestureRecognizer& recognizer) override;

private:
    class Metrics;

    void record(std::string call);

    Screen& m_screen;
    platform::UIView& m_owner;
    platform::CGRect m_ownFrame;
    platform::CGRect m_frame;
    IntrinsicSize m_intrinsicSize;
    std::optional<platform::UIColor> m_backgroundColor;
    bool m_translates = true;
    bool m_fillsScreen = false;
    std::vector<std::string> m_ambiguities;
};

/// Short for `UIViewPeer::of`.
[[nodiscard]] ZELVORA_API UIViewPeer& peer(platform::UIView const& view);
/// The view's frame in its superview, after `layoutIfNeeded` or `Platform::layout`.
[[nodiscard]] ZELVORA_API platform::CGRect frame(platform::UIView const& view);

}
