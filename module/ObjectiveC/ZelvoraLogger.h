#pragma once

#import "ZelvoraExport.h"

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

/// Writes each message to standard output and, if the system log is enabled for the message's type, to the system log.
/// Both happen before the call returns; failures to write are ignored. Any thread.
ZELVORA_EXPORT __attribute__((objc_subclassing_restricted))
@interface ZelvoraLogger : NSObject

/// Debug.
+ (void)d:(NSString*)message;
/// Info.
+ (void)i:(NSString*)message;
/// Error.
+ (void)e:(NSString*)message;
/// Default.
+ (void)l:(NSString*)message;
/// Warning; the system log's type is error.
+ (void)w:(NSString*)message;
/// Critical; the system log's type is fault.
+ (void)c:(NSString*)message;
/// Notice; the system log's type is default.
+ (void)n:(NSString*)message;
/// Trace; the system log's type is debug.
+ (void)t:(NSString*)message;
/// Fault.
+ (void)f:(NSString*)message;

@end

NS_ASSUME_NONNULL_END
