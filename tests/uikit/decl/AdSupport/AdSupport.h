#pragma once
#import <Foundation/Foundation.h>
NS_ASSUME_NONNULL_BEGIN
@interface ASIdentifierManager : NSObject
+ (ASIdentifierManager*)sharedManager;
@property (nonnull, nonatomic, readonly) NSUUID* advertisingIdentifier;
@end
NS_ASSUME_NONNULL_END
