// Own, minimal declarations of the UIKit API the adapter uses.
#pragma once
#import <Foundation/Foundation.h>
NS_ASSUME_NONNULL_BEGIN
#ifndef UIKIT_EXTERN
#ifdef __cplusplus
#define UIKIT_EXTERN extern "C" __attribute__((visibility("default")))
#else
#define UIKIT_EXTERN extern __attribute__((visibility("default")))
#endif
#endif
#ifndef ZELVORA_CG
#define ZELVORA_CG
typedef struct {
    CGFloat x, y;
} CGPoint;
typedef struct {
    CGFloat width, height;
} CGSize;
typedef struct {
    CGPoint origin;
    CGSize size;
} CGRect;
static inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat w, CGFloat h)
{
    CGRect r = { { x, y }, { w, h } };
    return r;
}
#endif
@class UIView, UIViewController, UIWindow, UINavigationController, UIGestureRecognizer, NSLayoutXAxisAnchor,
    NSLayoutYAxisAnchor, NSLayoutDimension;
NS_SWIFT_UI_ACTOR
@interface UIResponder : NSObject
@end
typedef struct {
    CGFloat top, left, bottom, right;
} UIEdgeInsets;
@interface UIColor : NSObject <NSCopying>
+ (UIColor*)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
- (BOOL)getRed:(nullable CGFloat*)red
         green:(nullable CGFloat*)green
          blue:(nullable CGFloat*)blue
         alpha:(nullable CGFloat*)alpha;
@end
@interface NSLayoutConstraint : NSObject
@property (getter=isActive) BOOL active;
@end
@interface NSLayoutAnchor<AnchorType> : NSObject
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor<AnchorType>*)anchor NS_SWIFT_NAME(constraint(equalTo:));
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor<AnchorType>*)anchor
                                      constant:(CGFloat)c NS_SWIFT_NAME(constraint(equalTo:constant:));
@end
@interface NSLayoutXAxisAnchor : NSLayoutAnchor <NSLayoutXAxisAnchor*>
@end
@interface NSLayoutYAxisAnchor : NSLayoutAnchor <NSLayoutYAxisAnchor*>
@end
@interface UILayoutGuide : NSObject
@property (nonatomic, readonly, strong) NSLayoutYAxisAnchor* topAnchor;
@property (nonatomic, readonly, strong) NSLayoutYAxisAnchor* bottomAnchor;
@property (nonatomic, readonly, strong) NSLayoutXAxisAnchor* leadingAnchor;
@property (nonatomic, readonly, strong) NSLayoutXAxisAnchor* trailingAnchor;
@end
typedef NS_OPTIONS(NSUInteger, UIViewAutoresizing) {
    UIViewAutoresizingNone = 0,
    UIViewAutoresizingFlexibleWidth = 1 << 1,
    UIViewAutoresizingFlexibleHeight = 1 << 4
};
UIKIT_EXTERN const CGFloat UIViewNoIntrinsicMetric;
NS_SWIFT_UI_ACTOR
@interface UIView : UIResponder
- (instancetype)initWithFrame:(CGRect)frame NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@property (nonatomic) CGRect frame;
@property (nonatomic) CGRect bounds;
@property (nonatomic) UIViewAutoresizing autoresizingMask;
@property (nonatomic, getter=isHidden) BOOL hidden;
@property (nullable, nonatomic, copy) UIColor* backgroundColor;
@property (nullable, nonatomic, readonly) UIView* superview;
@property (nullable, nonatomic, readonly) UIWindow* window;
@property (nonatomic, readonly) CGSize intrinsicContentSize;
@property (nonatomic, readonly) UIEdgeInsets safeAreaInsets;
@property (nonatomic, readonly) NSArray<__kindof NSLayoutConstraint*>* constraints;
@property (nullable, nonatomic, copy) NSArray<__kindof UIGestureRecognizer*>* gestureRecognizers;
@property (nonatomic, readonly, copy) NSArray<__kindof UIView*>* subviews;
- (void)addSubview:(UIView*)view;
- (void)removeFromSuperview;
- (void)bringSubviewToFront:(UIView*)view;
- (void)layoutIfNeeded;
@property (nonatomic) BOOL translatesAutoresizingMaskIntoConstraints;
@property (nonatomic, readonly, strong) NSLayoutYAxisAnchor* topAnchor;
@property (nonatomic, readonly, strong) NSLayoutYAxisAnchor* bottomAnchor;
@property (nonatomic, readonly, strong) NSLayoutXAxisAnchor* leadingAnchor;
@property (nonatomic, readonly, strong) NSLayoutXAxisAnchor* trailingAnchor;
@property (nonatomic, readonly, strong) UILayoutGuide* safeAreaLayoutGuide;
- (void)addGestureRecognizer:(UIGestureRecognizer*)recognizer;
+ (void)animateWithDuration:(NSTimeInterval)duration animations:(void (^)(void))animations;
@end
typedef NS_ENUM(NSInteger, UIGestureRecognizerState) {
    UIGestureRecognizerStatePossible,
    UIGestureRecognizerStateBegan,
    UIGestureRecognizerStateChanged,
    UIGestureRecognizerStateEnded,
    UIGestureRecognizerStateCancelled,
    UIGestureRecognizerStateFailed
};
NS_SWIFT_UI_ACTOR
@protocol UIGestureRecognizerDelegate <NSObject>
@optional
- (BOOL)gestureRecognizerShouldBegin:(UIGestureRecognizer*)recognizer;
- (BOOL)gestureRecognizer:(UIGestureRecognizer*)recognizer
    shouldRecognizeSimultaneouslyWithGestureRecognizer:(UIGestureRecognizer*)other;
@end
NS_SWIFT_UI_ACTOR
@interface UIGestureRecognizer : NSObject
- (instancetype)initWithTarget:(nullable id)target action:(nullable SEL)action NS_DESIGNATED_INITIALIZER;
@property (nonatomic, readonly) UIGestureRecognizerState state;
@property (nullable, nonatomic, weak) id<UIGestureRecognizerDelegate> delegate;
@property (nonatomic, getter=isEnabled) BOOL enabled;
@end
@interface UIPanGestureRecognizer : UIGestureRecognizer
@end
typedef NS_OPTIONS(NSUInteger, UIRectEdge) {
    UIRectEdgeNone = 0,
    UIRectEdgeTop = 1 << 0,
    UIRectEdgeLeft = 1 << 1,
    UIRectEdgeBottom = 1 << 2,
    UIRectEdgeRight = 1 << 3
};
@interface UIScreenEdgePanGestureRecognizer : UIPanGestureRecognizer
@property (readwrite, nonatomic, assign) UIRectEdge edges;
@end
typedef NS_ENUM(NSInteger, UIModalPresentationStyle) {
    UIModalPresentationFullScreen = 0,
    UIModalPresentationPageSheet = 1,
    UIModalPresentationAutomatic = -2
};
NS_SWIFT_UI_ACTOR
@interface UIViewController : UIResponder
- (instancetype)initWithNibName:(nullable NSString*)name bundle:(nullable NSBundle*)bundle NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@property (null_resettable, nonatomic, strong) UIView* view;
@property (nonatomic, readonly, getter=isViewLoaded) BOOL viewLoaded;
@property (nullable, nonatomic, readonly, strong) UINavigationController* navigationController;
- (void)loadView;
- (void)viewDidLoad;
- (void)viewWillAppear:(BOOL)animated;
- (void)viewDidAppear:(BOOL)animated;
- (void)viewWillDisappear:(BOOL)animated;
- (void)viewDidDisappear:(BOOL)animated;
@property (nonatomic, assign) UIModalPresentationStyle modalPresentationStyle;
@property (nullable, nonatomic, readonly) UIViewController* presentedViewController;
@property (nullable, nonatomic, readonly) UIViewController* presentingViewController;
- (void)presentViewController:(UIViewController*)vc animated:(BOOL)flag completion:(void (^_Nullable)(void))completion;
- (void)dismissViewControllerAnimated:(BOOL)flag completion:(void (^_Nullable)(void))completion;
@end
@interface UINavigationController : UIViewController
- (instancetype)initWithRootViewController:(UIViewController*)root;
@property (nullable, nonatomic, readonly, strong) UIViewController* topViewController;
@property (nonatomic, copy) NSArray<__kindof UIViewController*>* viewControllers;
@property (nullable, nonatomic, readonly) UIGestureRecognizer* interactivePopGestureRecognizer;
- (void)pushViewController:(UIViewController*)vc animated:(BOOL)animated;
- (nullable UIViewController*)popViewControllerAnimated:(BOOL)animated;
@end
NS_SWIFT_UI_ACTOR
@interface UIWindow : UIView
@property (nullable, nonatomic, strong) UIViewController* rootViewController;
- (void)makeKeyAndVisible;
@end
typedef NS_ENUM(NSInteger, UIApplicationState) {
    UIApplicationStateActive,
    UIApplicationStateInactive,
    UIApplicationStateBackground
};
typedef NSString* UIApplicationOpenExternalURLOptionsKey NS_EXTENSIBLE_STRING_ENUM;
NS_SWIFT_UI_ACTOR
@interface UIApplication : UIResponder
@property (class, nonatomic, readonly) UIApplication* sharedApplication;
@property (nonatomic, readonly) UIApplicationState applicationState;
- (BOOL)canOpenURL:(NSURL*)url;
- (void)openURL:(NSURL*)url
              options:(NSDictionary<UIApplicationOpenExternalURLOptionsKey, id>*)options
    completionHandler:(void (^_Nullable)(BOOL success))completion;
@end
UIKIT_EXTERN NSString* const UIApplicationDidBecomeActiveNotification;
UIKIT_EXTERN NSString* const UIApplicationDidEnterBackgroundNotification;
UIKIT_EXTERN NSString* const UIApplicationWillEnterForegroundNotification;

// What the example host uses besides.
typedef NSString* UIApplicationLaunchOptionsKey NS_EXTENSIBLE_STRING_ENUM
    __attribute__((swift_name("UIApplication.LaunchOptionsKey")));
NS_SWIFT_UI_ACTOR
@protocol UIApplicationDelegate <NSObject>
@optional
- (BOOL)application:(UIApplication*)application
    didFinishLaunchingWithOptions:(nullable NSDictionary<UIApplicationLaunchOptionsKey, id>*)launchOptions;
@end
NS_SWIFT_UI_ACTOR
@interface UIScene : UIResponder
@end
NS_SWIFT_UI_ACTOR
@interface UIWindowScene : UIScene
@end
NS_SWIFT_UI_ACTOR
@interface UISceneSession : NSObject
@end
NS_SWIFT_UI_ACTOR __attribute__((swift_name("UIScene.ConnectionOptions")))
@interface UISceneConnectionOptions : NSObject
@end
NS_SWIFT_UI_ACTOR
@protocol UISceneDelegate <NSObject>
@optional
- (void)scene:(UIScene*)scene
    willConnectToSession:(UISceneSession*)session
                 options:(UISceneConnectionOptions*)connectionOptions;
@end
NS_SWIFT_UI_ACTOR
@protocol UIWindowSceneDelegate <UISceneDelegate>
@optional
@property (nullable, nonatomic, strong) UIWindow* window;
@end
@interface UIWindow (Scenes)
- (instancetype)initWithWindowScene:(UIWindowScene*)windowScene;
@end
NS_SWIFT_UI_ACTOR
@interface UIAction : NSObject
+ (instancetype)actionWithTitle:(NSString*)title
                          image:(nullable id)image
                     identifier:(nullable NSString*)identifier
                        handler:(NS_SWIFT_UI_ACTOR void (^)(__kindof UIAction* action))handler NS_REFINED_FOR_SWIFT;
@end
typedef NS_ENUM(NSInteger, UIButtonType) {
    UIButtonTypeCustom = 0,
    UIButtonTypeSystem = 1
} __attribute__((swift_name("UIButton.ButtonType")));
NS_SWIFT_UI_ACTOR
@interface UIControl : UIView
@end
NS_SWIFT_UI_ACTOR
@interface UIButton : UIControl
+ (instancetype)buttonWithType:(UIButtonType)buttonType primaryAction:(nullable UIAction*)primaryAction;
@end
NS_SWIFT_UI_ACTOR
@interface UILabel : UIView
@property (nullable, nonatomic, copy) NSString* text;
@end
typedef NS_ENUM(NSInteger, UILayoutConstraintAxis) {
    UILayoutConstraintAxisHorizontal = 0,
    UILayoutConstraintAxisVertical = 1
} __attribute__((swift_name("NSLayoutConstraint.Axis")));
NS_SWIFT_UI_ACTOR
@interface UIStackView : UIView
- (instancetype)initWithArrangedSubviews:(NSArray<__kindof UIView*>*)views;
@property (nonatomic) UILayoutConstraintAxis axis;
@end
@interface NSLayoutConstraint (Activation)
+ (void)activateConstraints:(NSArray<NSLayoutConstraint*>*)constraints NS_SWIFT_NAME(activate(_:));
@end
@interface NSLayoutDimension : NSLayoutAnchor <NSLayoutDimension*>
- (NSLayoutConstraint*)constraintEqualToConstant:(CGFloat)c NS_SWIFT_NAME(constraint(equalToConstant:));
@end
@interface UIView (Dimensions)
@property (nonatomic, readonly, strong) NSLayoutDimension* heightAnchor;
@end
@interface UIViewController (Children)
- (void)addChildViewController:(UIViewController*)child NS_SWIFT_NAME(addChild(_:));
- (void)didMoveToParentViewController:(nullable UIViewController*)parent NS_SWIFT_NAME(didMove(toParent:));
@end
@interface UIColor (System)
@property (class, nonatomic, readonly) UIColor* systemBackgroundColor NS_SWIFT_NAME(systemBackground);
@end
@interface UINavigationController (Bar)
@property (nonatomic, getter=isNavigationBarHidden) BOOL navigationBarHidden;
@end
NS_ASSUME_NONNULL_END
