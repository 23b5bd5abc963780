#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"
#include "ZelvoraPlatform/UIKit/UIScreenEdgePanGestureRecognizer.h"

#include <memory>
#include <vector>

namespace zelvora::shared {

/// Decides which recognizers take part in one gesture. Main thread.
///
/// A recognizer takes part if it may begin (it is enabled and its delegate does not forbid it) and if, for each one
/// that has begun before it, one of the two delegates allows both to recognize simultaneously. As on the phone, a
/// delegate is asked whether the recognizer should begin first; the question about simultaneous recognition is asked
/// only about a recognizer that may begin while another one has begun.
class ZELVORA_API GestureArbitration final {
public:
    /// Asks the delegates, whose answers may change anything, and returns whether the recognizer takes part.
    [[nodiscard]] bool begin(std::shared_ptr<platform::UIGestureRecognizer> const& recognizer);

    /// Those that take part, in the order in which they began.
    [[nodiscard]] std::vector<std::shared_ptr<platform::UIGestureRecognizer>> const& begun() const { return m_begun; }

private:
    std::vector<std::shared_ptr<platform::UIGestureRecognizer>> m_begun;
};

/// Whether the recognizer waits for drags from this edge.
[[nodiscard]] ZELVORA_API bool watchesEdge(platform::UIGestureRecognizer const& recognizer, platform::UIRectEdge edge);

}
