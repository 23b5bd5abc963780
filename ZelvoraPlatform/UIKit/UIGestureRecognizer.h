#pragma once

#include "ZelvoraPlatform/Export.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace zelvora::platform {

class UIGestureRecognizer;

/// With the phone's raw values.
enum class UIGestureRecognizerState : std::uint8_t {
    Possible = 0,
    Began = 1,
    Changed = 2,
    Ended = 3,
    Cancelled = 4,
    Failed = 5
};

/// Consulted by the system before a gesture begins. Main thread.
class ZELVORA_API UIGestureRecognizerDelegate {
public:
    virtual ~UIGestureRecognizerDelegate() = default;

    /// Whether the gesture may begin; without a delegate it may.
    virtual bool gestureRecognizerShouldBegin(UIGestureRecognizer& recognizer) = 0;
    /// Whether both may recognize the same touches. The consent of one of the two delegates is enough.
    virtual bool gestureRecognizerShouldRecognizeSimultaneouslyWith(
        UIGestureRecognizer& recognizer, UIGestureRecognizer& other) = 0;
};

/// Turns touches into calls of an action. Main thread. An adapter drives it: it asks `shouldBegin` at the start of a
/// gesture and, if that is true, reports each state with `recognize`. An adapter that wraps a recognizer of the system
/// derives this class and overrides the setters to pass the values on.
class ZELVORA_API UIGestureRecognizer {
public:
    UIGestureRecognizer() = default;
    virtual ~UIGestureRecognizer() = default;
    UIGestureRecognizer(UIGestureRecognizer const&) = delete;
    UIGestureRecognizer& operator=(UIGestureRecognizer const&) = delete;

    /// The state reported last; "possible" before the first.
    [[nodiscard]] UIGestureRecognizerState state() const { return m_state; }
    /// Enabled at first. A disabled recognizer begins no gesture and does not ask its delegate.
    /// @{
    [[nodiscard]] bool isEnabled() const { return m_enabled; }
    virtual void setEnabled(bool enabled) { m_enabled = enabled; }
    /// @}
    /// Referenced weakly: nullptr if it was never set or has been destroyed.
    /// @{
    [[nodiscard]] std::shared_ptr<UIGestureRecognizerDelegate> delegate() const { return m_delegate.lock(); }
    virtual void setDelegate(std::weak_ptr<UIGestureRecognizerDelegate> delegate) { m_delegate = std::move(delegate); }
    /// @}

    /// For adapters: whether the recognizer is enabled and its delegate does not object.
    [[nodiscard]] bool shouldBegin();
    /// For adapters: stores the state and calls the action, even if the state is the same as before.
    void recognize(UIGestureRecognizerState state);

protected:
    /// Called by `recognize`.
    virtual void stateDidChange() { }

private:
    UIGestureRecognizerState m_state = UIGestureRecognizerState::Possible;
    bool m_enabled = true;
    std::weak_ptr<UIGestureRecognizerDelegate> m_delegate;
};

}
