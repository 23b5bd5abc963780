#import "module/ObjectiveC/ZelvoraIOSViewController.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraAdapters/uikit/Host.h"
#include "ZelvoraIOS/ZelvoraIOSViewController/ZelvoraIOSViewController.h"
#import "module/ObjectiveC/ZelvoraWebView.h"

#include <memory>

namespace uikit = zelvora::uikit;
namespace platform = zelvora::platform;

namespace {

// nullptr once the SDK has let go of its controller while the host still holds this one: then every call does nothing.
std::shared_ptr<zelvora::ZelvoraIOSViewController> ownerOf(ZelvoraIOSViewController* controller)
{
    return std::dynamic_pointer_cast<zelvora::ZelvoraIOSViewController>(uikit::ownerOf(controller));
}

}

@interface ZelvoraIOSViewController () <ZLVViewController>
- (instancetype)initForOwner NS_DESIGNATED_INITIALIZER;
@end

@implementation ZelvoraIOSViewController

+ (void)initialize
{
    uikit::install();
    // The adapter makes it by its name, which a linker does not see.
    (void)[ZelvoraWebView class];
}

- (instancetype)initWithUrlString:(NSString*)urlString
{
    self = [super initWithNibName:nil bundle:nil];
    if (!self)
        return nil;
    uikit::adoptNext(self);
    auto const owner = std::make_shared<zelvora::ZelvoraIOSViewController>(uikit::textOf(urlString));
    uikit::nativeOf(*owner);
    return self;
}

- (instancetype)initForOwner
{
    return [super initWithNibName:nil bundle:nil];
}

// The two that are not supported: the SDK's own stop the process with a message.

- (instancetype)initWithNibName:(NSString*)nibName bundle:(NSBundle*)bundle
{
    zelvora::ZelvoraIOSViewController const refusing(std::nullopt, nullptr);
    return nil;
}

- (instancetype)initWithCoder:(NSCoder*)coder
{
    zelvora::ZelvoraIOSViewController const refusing { platform::NSCoder() };
    return nil;
}

- (void)viewDidLoad
{
    [super viewDidLoad];
    uikit::viewDidLoad(self);
}

- (void)viewWillDisappear:(BOOL)animated
{
    [super viewWillDisappear:animated];
    uikit::viewWillDisappear(self, animated);
}

// UIGestureRecognizerDelegate. The SDK's answers are the same for every recognizer.

- (BOOL)gestureRecognizerShouldBegin:(UIGestureRecognizer*)gestureRecognizer
{
    platform::UIGestureRecognizer any;
    auto const owner = ownerOf(self);
    return owner && owner->gestureRecognizerShouldBegin(any);
}

- (BOOL)gestureRecognizer:(UIGestureRecognizer*)gestureRecognizer
    shouldRecognizeSimultaneouslyWithGestureRecognizer:(UIGestureRecognizer*)otherGestureRecognizer
{
    platform::UIGestureRecognizer any;
    auto const owner = ownerOf(self);
    return owner && owner->gestureRecognizerShouldRecognizeSimultaneouslyWith(any, any);
}

@end
