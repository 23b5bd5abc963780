// Small recording stand-ins for the UIKit / WebKit / ATT classes the adapter touches. Ownership follows the documented
// behaviour (a content controller retains its handlers, a presenter retains the presented controller, ...).
#import "doubles.h"

#import <AdSupport/AdSupport.h>
#import <dispatch/dispatch.h>
#import <os/log.h>

#include <cstdarg>
#include <cstdio>
#include <deque>
namespace doubles {
static std::deque<dispatch_block_t>& queue()
{
    static auto* q = new std::deque<dispatch_block_t>;
    return *q;
}
std::vector<std::string>& calls()
{
    static auto* v = new std::vector<std::string>;
    return *v;
}
std::vector<std::string>& logs()
{
    static auto* v = new std::vector<std::string>;
    return *v;
}
ATTrackingManagerAuthorizationStatus& att_answer()
{
    static auto s = ATTrackingManagerAuthorizationStatusDenied;
    return s;
}
void reset()
{
    queue().clear();
    calls().clear();
    logs().clear();
    att_answer() = ATTrackingManagerAuthorizationStatusDenied;
}
size_t run_main_queue()
{
    size_t n = 0;
    while (!queue().empty()) {
        @autoreleasepool {
            dispatch_block_t b = queue().front();
            queue().pop_front();
            b();
            ++n;
        }
    }
    return n;
}
static void note(NSString* s)
{
    calls().push_back(s.UTF8String);
}
}
using doubles::note;
extern "C" {
#ifndef ZELVORA_DOUBLES_OWN_DISPATCH
struct dispatch_queue_s {
    int x;
};
static dispatch_queue_s g_main;
dispatch_queue_t dispatch_get_main_queue(void)
{
    return &g_main;
}
void dispatch_async(dispatch_queue_t, dispatch_block_t b)
{
    doubles::queue().push_back([b copy]);
}
#endif
os_log_t os_log_create(const char*, const char*)
{
    static int x;
    return reinterpret_cast<os_log_t>(&x);
}
bool os_log_type_enabled(os_log_t, os_log_type_t)
{
    return true;
}
void zelvora_double_os_log(os_log_t, os_log_type_t, char const* f, ...)
{
    va_list a;
    va_start(a, f);
    char b[512];
    std::string g(f);
    if (auto p = g.find("{public}"); p != g.npos)
        g.erase(p, 8);
    vsnprintf(b, sizeof b, g.c_str(), a);
    va_end(a);
    doubles::logs().push_back(b);
}
}
NSString* const UIApplicationDidBecomeActiveNotification = @"UIApplicationDidBecomeActiveNotification";
NSString* const UIApplicationDidEnterBackgroundNotification = @"UIApplicationDidEnterBackgroundNotification";
NSString* const UIApplicationWillEnterForegroundNotification = @"UIApplicationWillEnterForegroundNotification";
@implementation NSObject (ZelvoraKVO)
- (void)removeObserver:(NSObject*)o forKeyPath:(NSString*)k context:(void*)c
{
    [self removeObserver:o forKeyPath:k];
}
@end
@implementation NSURLSessionTask
- (void)resume
{
}
@end
@implementation NSURLSessionDataTask
@end
@implementation NSURLSession
+ (NSURLSession*)sharedSession
{
    static NSURLSession* s = [NSURLSession new];
    return s;
}
- (NSURLSessionDataTask*)dataTaskWithRequest:(NSURLRequest*)r
                           completionHandler:(void (^)(NSData*, NSURLResponse*, NSError*))c
{
    note([NSString stringWithFormat:@"fetch %@", r.URL.absoluteString]);
    c(nil, nil, [NSError errorWithDomain:@"NSURLErrorDomain" code:-1009 userInfo:nil]);
    return [NSURLSessionDataTask new];
}
@end
@implementation UIResponder
@end
@implementation UIColor
+ (UIColor*)colorWithRed:(CGFloat)r green:(CGFloat)g blue:(CGFloat)b alpha:(CGFloat)a
{
    return [UIColor new];
}
- (id)copyWithZone:(NSZone*)z
{
    return self;
}
@end
@implementation NSLayoutConstraint {
    BOOL _active;
}
- (BOOL)isActive
{
    return _active;
}
- (void)setActive:(BOOL)a
{
    _active = a;
    note(a ? @"activate" : @"deactivate");
}
@end
@implementation NSLayoutAnchor
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor*)a
{
    return [NSLayoutConstraint new];
}
@end
@implementation NSLayoutXAxisAnchor
@end
@implementation NSLayoutYAxisAnchor
@end
@implementation UILayoutGuide
- (NSLayoutYAxisAnchor*)topAnchor
{
    return [NSLayoutYAxisAnchor new];
}
- (NSLayoutYAxisAnchor*)bottomAnchor
{
    return [NSLayoutYAxisAnchor new];
}
- (NSLayoutXAxisAnchor*)leadingAnchor
{
    return [NSLayoutXAxisAnchor new];
}
- (NSLayoutXAxisAnchor*)trailingAnchor
{
    return [NSLayoutXAxisAnchor new];
}
@end
@implementation UIView {
    NSMutableArray* _subs;
    NSMutableArray* _gestures;
    __weak UIView* _super;
}
@synthesize frame = _frame, bounds = _bounds, autoresizingMask = _autoresizingMask, hidden = _hidden,
            backgroundColor = _backgroundColor, translatesAutoresizingMaskIntoConstraints = _translates;
- (instancetype)initWithFrame:(CGRect)f
{
    if ((self = [super init])) {
        _frame = f;
        _bounds = f;
        _subs = [NSMutableArray new];
        _gestures = [NSMutableArray new];
        _translates = YES;
    }
    return self;
}
- (instancetype)init
{
    return [self initWithFrame:CGRectMake(0, 0, 0, 0)];
}
- (instancetype)initWithCoder:(NSCoder*)c
{
    return [self initWithFrame:CGRectMake(0, 0, 0, 0)];
}
- (UIView*)superview
{
    return _super;
}
- (NSArray*)subviews
{
    return [_subs copy];
}
- (void)addSubview:(UIView*)v
{
    [v removeFromSuperview];
    [_subs addObject:v];
    v->_super = self;
}
- (void)removeFromSuperview
{
    UIView* s = _super;
    if (!s)
        return;
    UIView* keep = self;
    [s->_subs removeObject:keep];
    _super = nil;
}
- (void)bringSubviewToFront:(UIView*)v
{
    if (![_subs containsObject:v])
        return;
    UIView* keep = v;
    [_subs removeObject:keep];
    [_subs addObject:keep];
}
- (void)layoutIfNeeded
{
    note(@"layout");
}
- (void)addGestureRecognizer:(UIGestureRecognizer*)g
{
    [_gestures addObject:g];
}
- (NSArray*)double_gestures
{
    return [_gestures copy];
}
+ (void)animateWithDuration:(NSTimeInterval)d animations:(void (^)(void))a
{
    note(@"animate");
    a();
}
- (NSLayoutYAxisAnchor*)topAnchor
{
    return [NSLayoutYAxisAnchor new];
}
- (NSLayoutYAxisAnchor*)bottomAnchor
{
    return [NSLayoutYAxisAnchor new];
}
- (NSLayoutXAxisAnchor*)leadingAnchor
{
    return [NSLayoutXAxisAnchor new];
}
- (NSLayoutXAxisAnchor*)trailingAnchor
{
    return [NSLayoutXAxisAnchor new];
}
- (UILayoutGuide*)safeAreaLayoutGuide
{
    return [UILayoutGuide new];
}
@end
@implementation UIGestureRecognizer {
    __weak id _target;
    SEL _action;
    __weak id<UIGestureRecognizerDelegate> _delegate;
    UIGestureRecognizerState _state;
}
@synthesize enabled = _enabled;
- (instancetype)initWithTarget:(id)t action:(SEL)a
{
    if ((self = [super init])) {
        _target = t;
        _action = a;
        _enabled = YES;
    }
    return self;
}
- (instancetype)init
{
    return [self initWithTarget:nil action:NULL];
}
- (UIGestureRecognizerState)state
{
    return _state;
}
- (id<UIGestureRecognizerDelegate>)delegate
{
    return _delegate;
}
- (void)setDelegate:(id<UIGestureRecognizerDelegate>)d
{
    _delegate = d;
}
- (BOOL)double_recognize
{
    if (!_enabled
        || ([_delegate respondsToSelector:@selector(gestureRecognizerShouldBegin:)]
            && ![_delegate gestureRecognizerShouldBegin:self]))
        return NO;
    for (NSInteger s = UIGestureRecognizerStateBegan; s <= UIGestureRecognizerStateEnded; ++s) {
        _state = (UIGestureRecognizerState)s;
        id t = _target;
        if (t && _action)
            ((void (*)(id, SEL, id))[t methodForSelector:_action])(t, _action, self);
    }
    return YES;
}
@end
@implementation UIPanGestureRecognizer
@end
@implementation UIScreenEdgePanGestureRecognizer
@synthesize edges = _edges;
@end
@implementation UIApplication
+ (UIApplication*)sharedApplication
{
    static UIApplication* a = [UIApplication new];
    return a;
}
- (UIApplicationState)applicationState
{
    return UIApplicationStateActive;
}
- (BOOL)canOpenURL:(NSURL*)u
{
    return [u.scheme isEqualToString:@"tel"];
}
- (void)openURL:(NSURL*)u options:(NSDictionary*)o completionHandler:(void (^)(BOOL))c
{
    note([NSString stringWithFormat:@"open %@", u.absoluteString]);
}
@end
@implementation UIViewController {
    UIView* _view;
@public
    __weak UINavigationController* _nav;
    UIViewController* _presented;
    __weak UIViewController* _presenting;
    void (^_dismissDone)(void);
}
@synthesize modalPresentationStyle = _modalPresentationStyle;
- (instancetype)initWithNibName:(NSString*)n bundle:(NSBundle*)b
{
    return [super init];
}
- (instancetype)init
{
    return [self initWithNibName:nil bundle:nil];
}
- (instancetype)initWithCoder:(NSCoder*)c
{
    return [self initWithNibName:nil bundle:nil];
}
- (BOOL)isViewLoaded
{
    return _view != nil;
}
- (UINavigationController*)navigationController
{
    return _nav;
}
- (void)viewWillDisappear:(BOOL)a
{
}
- (void)loadView
{
    self.view = [[UIView alloc] initWithFrame:CGRectMake(0, 0, 390, 844)];
}
- (void)viewDidLoad
{
}
- (void)viewWillAppear:(BOOL)a
{
}
- (void)viewDidDisappear:(BOOL)a
{
}
- (UIView*)view
{
    if (!_view) {
        [self loadView];
        [self viewDidLoad];
    }
    return _view;
}
- (void)setView:(UIView*)v
{
    _view = v;
}
- (UIViewController*)presentedViewController
{
    return _presented;
}
- (UIViewController*)presentingViewController
{
    return _presenting;
}
- (void)presentViewController:(UIViewController*)vc animated:(BOOL)f completion:(void (^)(void))c
{
    note([NSString stringWithFormat:@"present %@", [vc class]]);
    _presented = vc;
    vc->_presenting = self;
    [vc view];
    [vc viewWillAppear:f];
    if (c)
        c();
}
- (void)dismissViewControllerAnimated:(BOOL)f completion:(void (^)(void))c
{
    UIViewController* p = _presenting ?: self;
    note([NSString stringWithFormat:@"dismiss %@", [p->_presented class]]);
    p->_dismissDone = [c copy];
}
- (void)double_finishDismissal
{
    UIViewController* gone = _presented;
    _presented = nil;
    [gone viewWillDisappear:YES];
    [gone viewDidDisappear:YES];
    void (^d)(void) = _dismissDone;
    _dismissDone = nil;
    if (d)
        d();
}
@end
@implementation UINavigationController {
    NSMutableArray* _stack;
    UIScreenEdgePanGestureRecognizer* _pop;
}
- (instancetype)initWithNibName:(NSString*)n bundle:(NSBundle*)b
{
    if ((self = [super initWithNibName:n bundle:b])) {
        _stack = [NSMutableArray new];
        _pop = [UIScreenEdgePanGestureRecognizer new];
    }
    return self;
}
- (NSArray*)viewControllers
{
    return [_stack copy];
}
- (void)setViewControllers:(NSArray*)v
{
    [_stack removeAllObjects];
    [_stack addObjectsFromArray:v];
    for (UIViewController* c in v)
        c->_nav = self;
}
- (UIGestureRecognizer*)interactivePopGestureRecognizer
{
    return _pop;
}
- (void)pushViewController:(UIViewController*)vc animated:(BOOL)f
{
    note([NSString stringWithFormat:@"push %@", [vc class]]);
    UIViewController* below = [_stack lastObject];
    [_stack addObject:vc];
    vc->_nav = self;
    (void)[vc view];
    [below viewWillDisappear:f];
}
- (UIViewController*)popViewControllerAnimated:(BOOL)f
{
    if ([_stack count] < 2)
        return nil;
    UIViewController* vc = [_stack lastObject];
    note([NSString stringWithFormat:@"pop %@", [vc class]]);
    [_stack removeLastObject];
    [vc viewWillDisappear:f];
    vc->_nav = nil;
    return vc;
}
@end
@implementation ATTrackingManager
+ (ATTrackingManagerAuthorizationStatus)trackingAuthorizationStatus
{
    return doubles::att_answer();
}
+ (void)requestTrackingAuthorizationWithCompletionHandler:(void (^)(ATTrackingManagerAuthorizationStatus))c
{
    note(@"att");
    c(doubles::att_answer());
}
@end
@implementation ASIdentifierManager
+ (ASIdentifierManager*)sharedManager
{
    static ASIdentifierManager* m = [ASIdentifierManager new];
    return m;
}
- (NSUUID*)advertisingIdentifier
{
    return [[NSUUID alloc] initWithUUIDString:@"00000000-0000-0000-0000-000000000000"];
}
@end
