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

/// Asked by the system before a gesture begins. Main thread.
class ZELVORA_API UIGestureRecognizerDelegate {
public:
    virtual ~UIGestureRecognizerDelegate() = default;

    virtual bool gestureRecognizerShouldBegin(UIGestureRecognizer& recognizer) = 0;
    virtual bool gestureRecognizerShouldRecognizeSimultaneouslyWith(
        UIGestureRecognizer& recognizer, UIGestureRecognizer& other) = 0;
};

/// Turns touches into an action. Main thread. An adapter drives it: it asks `shouldBegin` and then reports states with
/// `recognize`; an adapter that stands for a system recogniser derives and overrides the setters to pass them on.
class ZELVORA_API UIGestureRecognizer {
public:
    UIGestureRecognizer() = default;
    virtual ~UIGestureRecognizer() = default;
    UIGestureRecognizer(UIGestureRecognizer const&) = delete;
    UIGestureRecognizer& operator=(UIGestureRecognizer const&) = delete;

    [[nodiscard]] UIGestureRecognizerState state() const { return m_state; }
    [[nodiscard]] bool isEnabled() const { return m_enabled; }
    virtual void setEnabled(bool enabled) { m_enabled = enabled; }
    /// Held weakly.
    [[nodiscard]] std::shared_ptr<UIGestureRecognizerDelegate> delegate() const { return m_delegate.lock(); }
    virtual void setDelegate(std::weak_ptr<UIGestureRecognizerDelegate> delegate) { m_delegate = std::move(delegate); }

    /// For adapters: enabled, and not forbidden by the delegate.
    [[nodiscard]] bool shouldBegin();
    /// For adapters: takes the state and tells the owner.
    void recognize(UIGestureRecognizerState state);

protected:
    /// The gesture's state changed.
    virtual void stateDidChange() { }

private:
    UIGestureRecognizerState m_state = UIGestureRecognizerState::Possible;
    bool m_enabled = true;
    std::weak_ptr<UIGestureRecognizerDelegate> m_delegate;
};

}
