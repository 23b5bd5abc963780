#include "ZelvoraAdapters/uikit/UIKit/Gestures.h"

#import <objc/runtime.h>

#include <functional>
#include <utility>

namespace {

using Recognizer = zelvora::platform::UIGestureRecognizer;

// Its address is the key.
char s_handlerKey;

}

/// The target and the delegate of a native recognizer. The system keeps neither, so the recognizer keeps it by
/// association.
@interface ZLVGestureHandler : NSObject <UIGestureRecognizerDelegate> {
@public
    // The SDK's recognizer, or nullptr once it is gone.
    std::function<std::shared_ptr<Recognizer>()> _recognizer;
}

+ (ZLVGestureHandler*)handlerOf:(UIGestureRecognizer*)native;
- (void)attachTo:(UIGestureRecognizer*)native;
- (void)gestureDidChange:(UIGestureRecognizer*)native;

@end

@implementation ZLVGestureHandler

+ (ZLVGestureHandler*)handlerOf:(UIGestureRecognizer*)native
{
    return objc_getAssociatedObject(native, &s_handlerKey);
}

- (void)attachTo:(UIGestureRecognizer*)native
{
    objc_setAssociatedObject(native, &s_handlerKey, self, OBJC_ASSOCIATION_RETAIN_NONATOMIC);
}

- (void)gestureDidChange:(UIGestureRecognizer*)native
{
    if (auto const recognizer = _recognizer())
        recognizer->recognize(static_cast<zelvora::platform::UIGestureRecognizerState>(native.state));
}

- (BOOL)gestureRecognizerShouldBegin:(UIGestureRecognizer*)native
{
    auto const recognizer = _recognizer();
    return recognizer && recognizer->shouldBegin();
}

- (BOOL)gestureRecognizer:(UIGestureRecognizer*)native
    shouldRecognizeSimultaneouslyWithGestureRecognizer:(UIGestureRecognizer*)other
{
    auto const recognizer = _recognizer();
    auto const delegate = recognizer ? recognizer->delegate() : nullptr;
    auto const rival = delegate ? zelvora::uikit::recognizerOf(other) : nullptr;
    return rival && delegate->gestureRecognizerShouldRecognizeSimultaneouslyWith(*recognizer, *rival);
}

@end

namespace zelvora::uikit {

namespace {

/// A recognizer of the system's, which drives itself. Only its delegate and whether it is enabled are ours to set.
class SystemGestureRecognizer final : public platform::UIGestureRecognizer {
public:
    explicit SystemGestureRecognizer(::UIGestureRecognizer* native) : m_native(native) { }

    // platform::UIGestureRecognizer
    void setEnabled(bool enabled) override
    {
        platform::UIGestureRecognizer::setEnabled(enabled);
        ::UIGestureRecognizer* native = m_native;
        native.enabled = enabled;
    }
    void setDelegate(std::weak_ptr<platform::UIGestureRecognizerDelegate> delegate) override
    {
        bool const isAbsent = delegate.expired();
        platform::UIGestureRecognizer::setDelegate(std::move(delegate));
        ::UIGestureRecognizer* native = m_native;
        native.delegate = isAbsent ? nil : [ZLVGestureHandler handlerOf:native];
    }

private:
    __weak ::UIGestureRecognizer* m_native;
};

}

UIScreenEdgePanGestureRecognizer* makeEdgePan(
    platform::UIView& view, platform::UIScreenEdgePanGestureRecognizer& recognizer)
{
    ZLVGestureHandler* handler = [[ZLVGestureHandler alloc] init];
    handler->_recognizer = [weak = view.weak_from_this(), &recognizer] {
        // The view keeps the recognizer.
        auto const kept = weak.lock();
        return kept ? std::shared_ptr<platform::UIGestureRecognizer>(kept, &recognizer) : nullptr;
    };
    UIScreenEdgePanGestureRecognizer* native =
        [[UIScreenEdgePanGestureRecognizer alloc] initWithTarget:handler action:@selector(gestureDidChange:)];
    native.edges = static_cast<UIRectEdge>(recognizer.edges());
    native.delegate = handler;
    [handler attachTo:native];
    return native;
}

std::shared_ptr<platform::UIGestureRecognizer> recognizerOf(UIGestureRecognizer* native)
{
    if (!native)
        return nullptr;
    if (ZLVGestureHandler* handler = [ZLVGestureHandler handlerOf:native])
        return handler->_recognizer();
    ZLVGestureHandler* handler = [[ZLVGestureHandler alloc] init];
    auto const made = std::make_shared<SystemGestureRecognizer>(native);
    handler->_recognizer = [made] { return made; };
    [handler attachTo:native];
    return made;
}

}
