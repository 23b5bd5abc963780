// Recognizers, and the finger that drags. A view keeps its recognizers; these keep neither their target nor their
// delegate.
#import "tests/uikit/doubles/UIKit.h"

#include <vector>

@interface UIGestureRecognizer () {
@public
    __weak id _target;
    SEL _action;
    __weak id<UIGestureRecognizerDelegate> _delegate;
    UIGestureRecognizerState _state;
}
- (void)tellTarget:(UIGestureRecognizerState)state;
@end

@implementation UIGestureRecognizer

@synthesize enabled = _enabled;

- (instancetype)initWithTarget:(id)target action:(SEL)action
{
    if ((self = [super init])) {
        _target = target;
        _action = action;
        _enabled = YES;
    }
    return self;
}

- (instancetype)init
{
    return [self initWithTarget:nil action:nil];
}

- (UIGestureRecognizerState)state
{
    return _state;
}

- (id<UIGestureRecognizerDelegate>)delegate
{
    return _delegate;
}

- (void)setDelegate:(id<UIGestureRecognizerDelegate>)delegate
{
    _delegate = delegate;
}

- (void)tellTarget:(UIGestureRecognizerState)state
{
    _state = state;
    id target = _target;
    if (target && _action)
        reinterpret_cast<void (*)(id, SEL, id)>([target methodForSelector:_action])(target, _action, self);
}

@end

@implementation UIPanGestureRecognizer
@end

@implementation UIScreenEdgePanGestureRecognizer
@synthesize edges = _edges;
@end

namespace {

bool mayBegin(UIGestureRecognizer* recognizer)
{
    id<UIGestureRecognizerDelegate> delegate = recognizer.delegate;
    return ![delegate respondsToSelector:@selector(gestureRecognizerShouldBegin:)] ||
        [delegate gestureRecognizerShouldBegin:recognizer];
}

bool allows(UIGestureRecognizer* recognizer, UIGestureRecognizer* other)
{
    id<UIGestureRecognizerDelegate> delegate = recognizer.delegate;
    return [delegate respondsToSelector:@selector(gestureRecognizer:
                                            shouldRecognizeSimultaneouslyWithGestureRecognizer:)]
        && [delegate gestureRecognizer:recognizer shouldRecognizeSimultaneouslyWithGestureRecognizer:other];
}

bool mayJoin(UIGestureRecognizer* recognizer, std::vector<UIGestureRecognizer*> const& begun)
{
    for (UIGestureRecognizer* other : begun) {
        if (!allows(recognizer, other) && !allows(other, recognizer))
            return false;
    }
    return true;
}

bool watchesLeftEdge(UIGestureRecognizer* recognizer)
{
    return [recognizer isKindOfClass:[UIScreenEdgePanGestureRecognizer class]]
        && (static_cast<UIScreenEdgePanGestureRecognizer*>(recognizer).edges & UIRectEdgeLeft) != 0;
}

}

@implementation UIView (Doubles)

- (NSUInteger)doubleDragFromLeftEdge
{
    std::vector<UIGestureRecognizer*> begun;
    for (UIView* view = self; view; view = view.superview) {
        for (UIGestureRecognizer* recognizer in view.gestureRecognizers) {
            if (recognizer.enabled && watchesLeftEdge(recognizer) && mayBegin(recognizer) && mayJoin(recognizer, begun))
                begun.push_back(recognizer);
        }
    }
    for (auto const state :
        { UIGestureRecognizerStateBegan, UIGestureRecognizerStateChanged, UIGestureRecognizerStateEnded }) {
        for (UIGestureRecognizer* recognizer : begun)
            [recognizer tellTarget:state];
    }
    return begun.size();
}

@end
