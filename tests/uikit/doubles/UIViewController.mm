// Controllers: when their views load, appear and disappear, what a stack shows, and what presents what.
#import "tests/uikit/doubles/Calls.h"
#import "tests/uikit/doubles/UIKit.h"

#include <functional>
#include <utility>
#include <vector>

using zelvora::doubles::finishTransitions;
using zelvora::doubles::note;
using zelvora::doubles::requireMainThread;

using Completion = void (^)(void);

namespace {

std::vector<std::function<void()>>& transitions()
{
    static auto* const s_transitions = new std::vector<std::function<void()>>;
    return *s_transitions;
}

// What is to happen at the end of a transition.
void atEnd(BOOL animated, std::function<void()> end)
{
    if (animated)
        transitions().push_back(std::move(end));
    else
        end();
}

CGRect screen()
{
    return CGRectMake(0, 0, zelvora::doubles::screenWidth, zelvora::doubles::screenHeight);
}

}

namespace zelvora::doubles {

void finishTransitions()
{
    for (auto const& end : std::exchange(transitions(), {}))
        end();
}

}

@interface UIViewController () {
@public
    UIView* _view;
    __weak UINavigationController* _navigationController;
    UIViewController* _presented;
    __weak UIViewController* _presenting;
    BOOL _isOnScreen;
    BOOL _isLeaving;
}
- (void)appear:(BOOL)animated;
- (void)disappear:(BOOL)animated;
- (UIViewController*)container;
- (void)endPresentations:(BOOL)animated completion:(Completion)completion;
@end

@implementation UIViewController

@synthesize modalPresentationStyle = _modalPresentationStyle;

- (instancetype)initWithNibName:(NSString*)name bundle:(NSBundle*)bundle
{
    requireMainThread("-[UIViewController initWithNibName:bundle:]");
    if ((self = [super init]))
        _modalPresentationStyle = UIModalPresentationAutomatic;
    return self;
}

- (instancetype)init
{
    return [self initWithNibName:nil bundle:nil];
}

- (instancetype)initWithCoder:(NSCoder*)coder
{
    return [self initWithNibName:nil bundle:nil];
}

- (UIView*)view
{
    if (!_view) {
        requireMainThread("-[UIViewController view]");
        [self loadView];
        [self viewDidLoad];
    }
    return _view;
}

- (void)setView:(UIView*)view
{
    _view = view;
}

- (BOOL)isViewLoaded
{
    return _view != nil;
}

- (void)loadView
{
    self.view = [[UIView alloc] initWithFrame:screen()];
}

- (void)viewDidLoad
{
}

- (void)viewWillAppear:(BOOL)animated
{
}

- (void)viewDidAppear:(BOOL)animated
{
}

- (void)viewWillDisappear:(BOOL)animated
{
}

- (void)viewDidDisappear:(BOOL)animated
{
}

- (void)appear:(BOOL)animated
{
    if (_isOnScreen)
        return;
    _isOnScreen = YES;
    [self viewWillAppear:animated];
    [self viewDidAppear:animated];
}

- (void)disappear:(BOOL)animated
{
    if (!_isOnScreen)
        return;
    _isOnScreen = NO;
    [self viewWillDisappear:animated];
    UIViewController* gone = self;
    atEnd(animated, [gone, animated] { [gone viewDidDisappear:animated]; });
}

- (UINavigationController*)navigationController
{
    return _navigationController;
}

/// What presents for this controller, and is presented with it.
- (UIViewController*)container
{
    UIViewController* stack = _navigationController;
    return stack ? stack : self;
}

- (UIViewController*)presentedViewController
{
    return [self container]->_presented;
}

- (UIViewController*)presentingViewController
{
    return [self container]->_presenting;
}

- (void)presentViewController:(UIViewController*)presented animated:(BOOL)animated completion:(Completion)completion
{
    requireMainThread("-[UIViewController presentViewController:animated:completion:]");
    note([NSString stringWithFormat:@"present %@", [presented class]]);
    finishTransitions();
    UIViewController* presenter = [self container];
    if (presenter->_presented || !presenter.viewLoaded || !presenter.view.window) {
        note(@"refused");
        return;
    }
    presenter->_presented = presented;
    presented->_presenting = presenter;
    UIWindow* window = presenter.view.window;
    presented.view.frame = window.bounds;
    [window addSubview:presented.view];
    BOOL const covers = presented.modalPresentationStyle == UIModalPresentationFullScreen;
    if (covers)
        [presenter disappear:animated];
    [presented appear:animated];
    atEnd(animated, [presenter, presented, covers, completion] {
        if (covers && presenter->_presented == presented)
            [presenter.view removeFromSuperview];
        if (completion)
            completion();
    });
}

- (void)dismissViewControllerAnimated:(BOOL)animated completion:(Completion)completion
{
    requireMainThread("-[UIViewController dismissViewControllerAnimated:completion:]");
    UIViewController* container = [self container];
    UIViewController* presenting = container->_presenting;
    UIViewController* presenter = container->_presented ? container : presenting;
    if (!presenter)
        return;
    note([NSString stringWithFormat:@"dismiss %@", [presenter->_presented class]]);
    finishTransitions();
    [presenter endPresentations:animated completion:completion];
}

- (void)endPresentations:(BOOL)animated completion:(Completion)completion
{
    std::vector<UIViewController*> leaving;
    for (UIViewController* above = _presented; above; above = above->_presented)
        leaving.insert(leaving.begin(), above);
    if (leaving.empty())
        return;
    // The uppermost screen is in the window, those that it covers may not be.
    UIWindow* window = leaving.front().view.window;
    for (UIViewController* controller : leaving) {
        if (std::exchange(controller->_isLeaving, YES))
            continue;
        [controller disappear:animated];
    }
    // A hook may have ended all of this.
    if (_presented != leaving.back())
        return;
    _presented = nil;
    for (UIViewController* controller : leaving) {
        controller->_presented = nil;
        controller->_presenting = nil;
    }
    if (!self.view.superview)
        [window addSubview:self.view];
    if (!_isLeaving)
        [self appear:animated];
    atEnd(animated, [leaving, completion] {
        for (UIViewController* controller : leaving) {
            [controller.view removeFromSuperview];
            controller->_isLeaving = NO;
        }
        if (completion)
            completion();
    });
}

@end

@implementation UINavigationController {
    NSMutableArray* _stack;
    UIScreenEdgePanGestureRecognizer* _popRecognizer;
}

- (instancetype)initWithNibName:(NSString*)name bundle:(NSBundle*)bundle
{
    if ((self = [super initWithNibName:name bundle:bundle])) {
        _stack = [[NSMutableArray alloc] init];
        _popRecognizer = [[UIScreenEdgePanGestureRecognizer alloc] initWithTarget:self action:@selector(popBySwipe:)];
        _popRecognizer.edges = UIRectEdgeLeft;
    }
    return self;
}

- (instancetype)initWithRootViewController:(UIViewController*)root
{
    if ((self = [self initWithNibName:nil bundle:nil]))
        self.viewControllers = @[ root ];
    return self;
}

- (void)dealloc
{
    for (UIViewController* controller in _stack)
        controller->_navigationController = nil;
}

- (void)viewDidLoad
{
    [super viewDidLoad];
    [self.view addGestureRecognizer:_popRecognizer];
    [self showTop];
}

- (void)appear:(BOOL)animated
{
    [super appear:animated];
    [self.topViewController appear:animated];
}

- (void)disappear:(BOOL)animated
{
    [super disappear:animated];
    [self.topViewController disappear:animated];
}

- (void)showTop
{
    UIViewController* top = self.topViewController;
    if (!top || top.view.superview == self.view)
        return;
    top.view.frame = self.view.bounds;
    [self.view addSubview:top.view];
}

- (UIViewController*)topViewController
{
    return [_stack lastObject];
}

- (NSArray*)viewControllers
{
    return [_stack copy];
}

- (void)setViewControllers:(NSArray*)controllers
{
    for (UIViewController* controller in _stack)
        controller->_navigationController = nil;
    [_stack setArray:controllers];
    for (UIViewController* controller in _stack)
        controller->_navigationController = self;
    if (self.viewLoaded)
        [self showTop];
}

- (UIGestureRecognizer*)interactivePopGestureRecognizer
{
    return _popRecognizer;
}

- (void)popBySwipe:(UIGestureRecognizer*)recognizer
{
    if (recognizer.state == UIGestureRecognizerStateBegan)
        [self popViewControllerAnimated:YES];
}

- (void)pushViewController:(UIViewController*)pushed animated:(BOOL)animated
{
    requireMainThread("-[UINavigationController pushViewController:animated:]");
    note([NSString stringWithFormat:@"push %@", [pushed class]]);
    if ([_stack indexOfObjectIdenticalTo:pushed] != NSNotFound)
        [NSException raise:NSInvalidArgumentException format:@"The controller is on the stack already"];
    finishTransitions();
    UIViewController* covered = self.topViewController;
    [_stack addObject:pushed];
    pushed->_navigationController = self;
    if (!self.viewLoaded)
        return;
    [self showTop];
    [covered disappear:animated];
    // A hook may have popped it.
    if (self.topViewController != pushed)
        return;
    if (_isOnScreen)
        [pushed appear:animated];
    UINavigationController* stack = self;
    atEnd(animated, [stack, covered] {
        if (stack.topViewController != covered && covered.viewLoaded)
            [covered.view removeFromSuperview];
    });
}

- (UIViewController*)popViewControllerAnimated:(BOOL)animated
{
    requireMainThread("-[UINavigationController popViewControllerAnimated:]");
    finishTransitions();
    if (_stack.count < 2)
        return nil;
    UIViewController* popped = self.topViewController;
    note([NSString stringWithFormat:@"pop %@", [popped class]]);
    [_stack removeLastObject];
    [popped disappear:animated];
    popped->_navigationController = nil;
    if (self.viewLoaded)
        [self showTop];
    if (_isOnScreen)
        [self.topViewController appear:animated];
    atEnd(animated, [popped] {
        if (popped.viewLoaded)
            [popped.view removeFromSuperview];
    });
    return popped;
}

@end

@implementation UIWindow {
    UIViewController* _root;
}

- (UIViewController*)rootViewController
{
    return _root;
}

- (void)setRootViewController:(UIViewController*)root
{
    requireMainThread("-[UIWindow setRootViewController:]");
    finishTransitions();
    if (UIViewController* old = std::exchange(_root, root)) {
        [old disappear:NO];
        [old.view removeFromSuperview];
    }
    if (!root)
        return;
    root.view.frame = self.bounds;
    [self addSubview:root.view];
    [root appear:NO];
}

- (void)makeKeyAndVisible
{
}

@end
