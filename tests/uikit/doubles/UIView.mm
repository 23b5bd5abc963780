// Views: the tree, the constraints and what they make of the frames. All constraints are equalities of edges.
#import "tests/uikit/doubles/Calls.h"
#import "tests/uikit/doubles/UIKit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <optional>
#include <vector>

using zelvora::doubles::note;
using zelvora::doubles::requireMainThread;

namespace {

enum class Edge { Top, Bottom, Leading, Trailing };

bool isHorizontal(Edge edge)
{
    return edge == Edge::Leading || edge == Edge::Trailing;
}

bool isBegin(Edge edge)
{
    return edge == Edge::Top || edge == Edge::Leading;
}

}

CGFloat const UIViewNoIntrinsicMetric = -1;

@implementation UIResponder
@end

@implementation UIColor {
    std::array<CGFloat, 4> _components;
}

+ (UIColor*)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha
{
    UIColor* color = [[UIColor alloc] init];
    color->_components = { red, green, blue, alpha };
    return color;
}

- (BOOL)getRed:(CGFloat*)red green:(CGFloat*)green blue:(CGFloat*)blue alpha:(CGFloat*)alpha
{
    std::array<CGFloat*, 4> const wanted { red, green, blue, alpha };
    for (std::size_t index = 0; index < wanted.size(); ++index) {
        if (wanted[index])
            *wanted[index] = _components[index];
    }
    return YES;
}

- (id)copyWithZone:(NSZone*)zone
{
    return self;
}

@end

@interface UILayoutGuide ()
- (instancetype)initWithView:(UIView*)view;
@end

@interface NSLayoutAnchor () {
@public
    __weak UIView* _view;
    BOOL _isOfSafeArea;
    Edge _edge;
}
@end

@interface NSLayoutConstraint () {
@public
    NSLayoutAnchor* _first;
    NSLayoutAnchor* _second;
    BOOL _isActive;
    // The view that keeps it while it is active.
    __weak UIView* _keeper;
}
@end

@interface UIView () {
@public
    NSMutableArray* _subviews;
    NSMutableArray* _constraints;
    NSMutableArray* _recognizers;
    __weak UIView* _superview;
}
- (void)placeAt:(CGRect)frame;
@end

namespace {

template<typename Anchor>
Anchor* makeAnchor(UIView* view, BOOL isOfSafeArea, Edge edge)
{
    Anchor* anchor = [[Anchor alloc] init];
    anchor->_view = view;
    anchor->_isOfSafeArea = isOfSafeArea;
    anchor->_edge = edge;
    return anchor;
}

BOOL isInside(UIView* view, UIView* ancestor)
{
    while (view && view != ancestor)
        view = view.superview;
    return view != nil;
}

UIView* commonAncestor(UIView* first, UIView* second)
{
    while (first && !isInside(second, first))
        first = first.superview;
    return first;
}

UIView* rootOf(UIView* view)
{
    while (UIView* superview = view.superview)
        view = superview;
    return view;
}

/// The frames of a tree in one direction. Positions are those in the root.
class Axis {
public:
    Axis(UIView* root, bool horizontal) : m_horizontal(horizontal)
    {
        CGSize const size = root.bounds.size;
        m_edges[root] = { 0.0, horizontal ? size.width : size.height };
        collect(root);
    }

    void solve()
    {
        do {
            m_isChanged = false;
            for (UIView* view : m_views)
                learnFromItself(view);
            for (NSLayoutConstraint* constraint : m_constraints)
                learn(constraint);
        } while (m_isChanged);
        for (NSLayoutConstraint* constraint : m_constraints)
            check(constraint);
    }

    [[nodiscard]] double begin(UIView* view) const { return m_edges.at(view).begin.value_or(0); }
    [[nodiscard]] double length(UIView* view) const
    {
        auto const& edges = m_edges.at(view);
        return edges.begin && edges.end ? *edges.end - *edges.begin : 0;
    }
    [[nodiscard]] std::vector<UIView*> const& views() const { return m_views; }

private:
    struct Edges {
        std::optional<double> begin;
        std::optional<double> end;
    };

    void collect(UIView* view)
    {
        for (NSLayoutConstraint* constraint in view->_constraints) {
            if (isHorizontal(constraint->_first->_edge) == m_horizontal)
                m_constraints.push_back(constraint);
        }
        for (UIView* subview in view->_subviews) {
            m_edges[subview] = {};
            m_views.push_back(subview);
            collect(subview);
        }
    }

    void set(std::optional<double>& edge, std::optional<double> value)
    {
        if (edge || !value)
            return;
        edge = value;
        m_isChanged = true;
    }

    void learnFromItself(UIView* view)
    {
        auto& edges = m_edges[view];
        if (view.translatesAutoresizingMaskIntoConstraints) {
            auto const& outer = m_edges[view.superview];
            CGRect const frame = view.frame;
            if (!outer.begin)
                return;
            set(edges.begin, *outer.begin + (m_horizontal ? frame.origin.x : frame.origin.y));
            set(edges.end, *edges.begin + (m_horizontal ? frame.size.width : frame.size.height));
            return;
        }
        CGSize const size = view.intrinsicContentSize;
        double const length = m_horizontal ? size.width : size.height;
        if (length < 0)
            return;
        if (edges.begin)
            set(edges.end, *edges.begin + length);
        else if (edges.end)
            set(edges.begin, *edges.end - length);
    }

    [[nodiscard]] std::optional<double> valueOf(NSLayoutAnchor* anchor)
    {
        UIView* view = anchor->_view;
        auto const& edges = m_edges[view];
        auto const value = isBegin(anchor->_edge) ? edges.begin : edges.end;
        if (!value || !anchor->_isOfSafeArea || m_horizontal || !view.window)
            return value;
        if (isBegin(anchor->_edge))
            return std::max(*value, zelvora::doubles::safeTop);
        return std::min(*value, zelvora::doubles::screenHeight - zelvora::doubles::safeBottom);
    }

    void learn(NSLayoutAnchor* anchor, std::optional<double> value)
    {
        if (anchor->_isOfSafeArea)
            return;
        auto& edges = m_edges[anchor->_view];
        set(isBegin(anchor->_edge) ? edges.begin : edges.end, value);
    }

    void learn(NSLayoutConstraint* constraint)
    {
        learn(constraint->_first, valueOf(constraint->_second));
        learn(constraint->_second, valueOf(constraint->_first));
    }

    void check(NSLayoutConstraint* constraint)
    {
        constexpr double tolerance = 0.01;
        auto const first = valueOf(constraint->_first);
        auto const second = valueOf(constraint->_second);
        if (first && second && std::abs(*first - *second) > tolerance)
            note(@"unsatisfiable");
    }

    bool m_horizontal;
    bool m_isChanged = false;
    std::map<UIView*, Edges> m_edges;
    std::vector<UIView*> m_views;
    std::vector<NSLayoutConstraint*> m_constraints;
};

void layOut(UIView* root)
{
    Axis horizontal(root, true);
    Axis vertical(root, false);
    horizontal.solve();
    vertical.solve();
    for (UIView* view : horizontal.views()) {
        if (view.translatesAutoresizingMaskIntoConstraints)
            continue;
        UIView* superview = view.superview;
        [view placeAt:CGRectMake(horizontal.begin(view) - horizontal.begin(superview),
                          vertical.begin(view) - vertical.begin(superview), horizontal.length(view),
                          vertical.length(view))];
    }
}

}

@implementation NSLayoutAnchor

- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor*)anchor
{
    NSLayoutConstraint* constraint = [[NSLayoutConstraint alloc] init];
    constraint->_first = self;
    constraint->_second = anchor;
    return constraint;
}

@end

@implementation NSLayoutXAxisAnchor
@end

@implementation NSLayoutYAxisAnchor
@end

@implementation NSLayoutConstraint

- (BOOL)isActive
{
    return _isActive;
}

- (void)setActive:(BOOL)active
{
    requireMainThread("-[NSLayoutConstraint setActive:]");
    if (active == _isActive)
        return;
    note(active ? @"activate" : @"deactivate");
    _isActive = active;
    if (!active) {
        if (UIView* keeper = _keeper)
            [keeper->_constraints removeObjectIdenticalTo:self];
        return;
    }
    UIView* ancestor = commonAncestor(_first->_view, _second->_view);
    if (!ancestor)
        [NSException raise:NSGenericException
                    format:@"Unable to activate a constraint of views without common ancestor"];
    _keeper = ancestor;
    [ancestor->_constraints addObject:self];
}

@end

@implementation UILayoutGuide {
    __weak UIView* _view;
}

- (instancetype)initWithView:(UIView*)view
{
    if ((self = [super init]))
        _view = view;
    return self;
}

- (NSLayoutYAxisAnchor*)topAnchor
{
    return makeAnchor<NSLayoutYAxisAnchor>(_view, YES, Edge::Top);
}

- (NSLayoutYAxisAnchor*)bottomAnchor
{
    return makeAnchor<NSLayoutYAxisAnchor>(_view, YES, Edge::Bottom);
}

- (NSLayoutXAxisAnchor*)leadingAnchor
{
    return makeAnchor<NSLayoutXAxisAnchor>(_view, YES, Edge::Leading);
}

- (NSLayoutXAxisAnchor*)trailingAnchor
{
    return makeAnchor<NSLayoutXAxisAnchor>(_view, YES, Edge::Trailing);
}

@end

@implementation UIView

@synthesize frame = _frame;
@synthesize bounds = _bounds;
@synthesize autoresizingMask = _autoresizingMask;
@synthesize hidden = _hidden;
@synthesize backgroundColor = _backgroundColor;
@synthesize translatesAutoresizingMaskIntoConstraints = _translatesAutoresizingMaskIntoConstraints;

- (instancetype)initWithFrame:(CGRect)frame
{
    requireMainThread("-[UIView initWithFrame:]");
    if ((self = [super init])) {
        _subviews = [[NSMutableArray alloc] init];
        _constraints = [[NSMutableArray alloc] init];
        _recognizers = [[NSMutableArray alloc] init];
        _translatesAutoresizingMaskIntoConstraints = YES;
        [self placeAt:frame];
    }
    return self;
}

- (instancetype)init
{
    return [self initWithFrame:CGRectMake(0, 0, 0, 0)];
}

- (instancetype)initWithCoder:(NSCoder*)coder
{
    return [self initWithFrame:CGRectMake(0, 0, 0, 0)];
}

- (void)placeAt:(CGRect)frame
{
    _frame = frame;
    _bounds = CGRectMake(0, 0, frame.size.width, frame.size.height);
}

- (void)setFrame:(CGRect)frame
{
    requireMainThread("-[UIView setFrame:]");
    [self placeAt:frame];
}

- (void)setHidden:(BOOL)hidden
{
    requireMainThread("-[UIView setHidden:]");
    _hidden = hidden;
}

- (UIView*)superview
{
    return _superview;
}

- (UIWindow*)window
{
    UIView* root = rootOf(self);
    return [root isKindOfClass:[UIWindow class]] ? static_cast<UIWindow*>(root) : nil;
}

- (NSArray*)subviews
{
    return [_subviews copy];
}

- (NSArray*)constraints
{
    return [_constraints copy];
}

- (CGSize)intrinsicContentSize
{
    return { UIViewNoIntrinsicMetric, UIViewNoIntrinsicMetric };
}

- (UIEdgeInsets)safeAreaInsets
{
    using namespace zelvora::doubles;
    return self.window ? UIEdgeInsets { safeTop, 0, safeBottom, 0 } : UIEdgeInsets {};
}

- (void)addSubview:(UIView*)view
{
    requireMainThread("-[UIView addSubview:]");
    UIView* moved = view;
    [moved removeFromSuperview];
    [_subviews addObject:moved];
    moved->_superview = self;
}

- (void)removeFromSuperview
{
    requireMainThread("-[UIView removeFromSuperview]");
    UIView* superview = _superview;
    if (!superview)
        return;
    for (UIView* ancestor = superview; ancestor; ancestor = ancestor.superview) {
        for (NSLayoutConstraint* constraint in [ancestor->_constraints copy]) {
            if (isInside(constraint->_first->_view, self) != isInside(constraint->_second->_view, self))
                constraint.active = NO;
        }
    }
    UIView* removed = self;
    [superview->_subviews removeObjectIdenticalTo:removed];
    _superview = nil;
}

- (void)bringSubviewToFront:(UIView*)view
{
    requireMainThread("-[UIView bringSubviewToFront:]");
    UIView* moved = view;
    if ([_subviews indexOfObjectIdenticalTo:moved] == NSNotFound)
        return;
    [_subviews removeObjectIdenticalTo:moved];
    [_subviews addObject:moved];
}

- (void)layoutIfNeeded
{
    requireMainThread("-[UIView layoutIfNeeded]");
    note(@"layout");
    layOut(rootOf(self));
}

- (NSLayoutYAxisAnchor*)topAnchor
{
    return makeAnchor<NSLayoutYAxisAnchor>(self, NO, Edge::Top);
}

- (NSLayoutYAxisAnchor*)bottomAnchor
{
    return makeAnchor<NSLayoutYAxisAnchor>(self, NO, Edge::Bottom);
}

- (NSLayoutXAxisAnchor*)leadingAnchor
{
    return makeAnchor<NSLayoutXAxisAnchor>(self, NO, Edge::Leading);
}

- (NSLayoutXAxisAnchor*)trailingAnchor
{
    return makeAnchor<NSLayoutXAxisAnchor>(self, NO, Edge::Trailing);
}

- (UILayoutGuide*)safeAreaLayoutGuide
{
    return [[UILayoutGuide alloc] initWithView:self];
}

- (NSArray*)gestureRecognizers
{
    return [_recognizers copy];
}

- (void)setGestureRecognizers:(NSArray*)recognizers
{
    [_recognizers setArray:recognizers ? recognizers : @[]];
}

- (void)addGestureRecognizer:(UIGestureRecognizer*)recognizer
{
    requireMainThread("-[UIView addGestureRecognizer:]");
    [_recognizers addObject:recognizer];
}

+ (void)animateWithDuration:(NSTimeInterval)duration animations:(void (^)(void))animations
{
    requireMainThread("+[UIView animateWithDuration:animations:]");
    note([NSString stringWithFormat:@"animate %g", duration]);
    animations();
}

@end
