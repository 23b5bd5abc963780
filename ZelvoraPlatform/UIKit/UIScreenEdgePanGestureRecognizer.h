#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"

#include <functional>

namespace zelvora::platform {

/// With the phone's raw values.
enum class UIRectEdge : std::uint8_t { None = 0, Top = 1, Left = 2, Bottom = 4, Right = 8 };

/// A drag that starts at an edge of the screen.
class ZELVORA_API UIScreenEdgePanGestureRecognizer final : public UIGestureRecognizer {
public:
    using Action = std::function<void(UIScreenEdgePanGestureRecognizer&)>;

    /// The action is called at every change of state; it holds its target weakly.
    explicit UIScreenEdgePanGestureRecognizer(Action action) : m_action(std::move(action)) { }

    [[nodiscard]] UIRectEdge edges() const { return m_edges; }
    void setEdges(UIRectEdge edges) { m_edges = edges; }

protected:
    void stateDidChange() override;

private:
    Action m_action;
    UIRectEdge m_edges = UIRectEdge::None;
};

}
