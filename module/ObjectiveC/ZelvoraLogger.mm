#import "module/ObjectiveC/ZelvoraLogger.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraAdapters/uikit/Host.h"
#include "ZelvoraIOS/ZelvoraLogger.h"

using zelvora::uikit::textOf;

@implementation ZelvoraLogger

+ (void)initialize
{
    zelvora::uikit::install();
}

+ (void)d:(NSString*)message
{
    zelvora::ZelvoraLogger::d(textOf(message));
}

+ (void)i:(NSString*)message
{
    zelvora::ZelvoraLogger::i(textOf(message));
}

+ (void)e:(NSString*)message
{
    zelvora::ZelvoraLogger::e(textOf(message));
}

+ (void)l:(NSString*)message
{
    zelvora::ZelvoraLogger::l(textOf(message));
}

+ (void)w:(NSString*)message
{
    zelvora::ZelvoraLogger::w(textOf(message));
}

+ (void)c:(NSString*)message
{
    zelvora::ZelvoraLogger::c(textOf(message));
}

+ (void)n:(NSString*)message
{
    zelvora::ZelvoraLogger::n(textOf(message));
}

+ (void)t:(NSString*)message
{
    zelvora::ZelvoraLogger::t(textOf(message));
}

+ (void)f:(NSString*)message
{
    zelvora::ZelvoraLogger::f(textOf(message));
}

@end
