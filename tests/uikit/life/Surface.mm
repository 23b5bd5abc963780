#include "tests/uikit/life/Surface.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraIOSViewController/ZelvoraIOSViewController.h"

namespace uikit = zelvora::uikit;

static int s_views = 0;
static int s_controllers = 0;

@implementation ZelvoraWebView

+ (int)liveCount
{
    return s_views;
}

- (instancetype)initForOwnerWithFrame:(CGRect)frame
{
    if ((self = [super initWithFrame:frame]))
        ++s_views;
    return self;
}

- (instancetype)initForHostWithURL:(NSString*)url
{
    if ((self = [super initWithFrame:CGRectMake(0, 0, 0, 0)])) {
        ++s_views;
        uikit::adoptNext(self);
        using Owner = zelvora::ZelvoraWebView;
        auto const owner = std::make_shared<Owner>(zelvora::platform::CGRect {}, uikit::textOf(url), true);
        uikit::nativeOf(*owner);
    }
    return self;
}

- (void)dealloc
{
    --s_views;
}

@end

@implementation ZelvoraIOSViewController

+ (int)liveCount
{
    return s_controllers;
}

- (instancetype)initForOwner
{
    if ((self = [super initWithNibName:nil bundle:nil]))
        ++s_controllers;
    return self;
}

- (instancetype)initForHostWithURL:(NSString*)url
{
    if ((self = [super initWithNibName:nil bundle:nil])) {
        ++s_controllers;
        uikit::adoptNext(self);
        auto const owner = std::make_shared<zelvora::ZelvoraIOSViewController>(uikit::textOf(url));
        uikit::nativeOf(*owner);
    }
    return self;
}

- (void)dealloc
{
    --s_controllers;
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

@end
