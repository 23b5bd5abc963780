#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"

#include <functional>

namespace zelvora::platform {

/// With the phone's raw values.
enum class UIRectEdge : std::uint8_t { None = 0, Top = 1, Left = 2, Bottom = 4, Right = 8 };

/// A drag that starts at one of the edges of the screen that it was made for. They do not change: a native recognizer
/// takes them once, when it is made. Adapters need to support the left one, which is all that the SDK uses.
class ZELVORA_API UIScreenEdgePanGestureRecognizer final : public UIGestureRecognizer {
public:
    /// Called with the recognizer, whose `state` says how far the drag is.
    using Action = std::function<void(UIScreenEdgePanGestureRecognizer&)>;

    /// The action is called for every reported state. It must not be empty, and must not own the view that the
    /// recognizer is added to.
    UIScreenEdgePanGestureRecognizer(UIRectEdge edges, Action action) : m_edges(edges), m_action(std::move(action)) { }

    /// Those that the recognizer was made for.
    [[nodiscard]] UIRectEdge edges() const { return m_edges; }

protected:
    void stateDidChange() override;

private:
    UIRectEdge m_edges;
    Action m_action;
};

}
