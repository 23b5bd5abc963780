#pragma once

#import "ZelvoraExport.h"

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

/// The SDK's persistent store, in the app's own preferences: values with an optional lifetime, and the queue of
/// tracking events. Any thread.
///
/// Each key has up to three entries in the preferences, under a prefix that names the app: the value, the date it was
/// written ("_ts") and its lifetime ("_exp"). They are read and written one at a time, so that another thread may see a
/// new value together with the old date.
ZELVORA_EXPORT __attribute__((objc_subclassing_restricted))
@interface ZelvoraStorage : NSObject

/// Stores a property-list value (text, number, boolean, date, data, and arrays and string-keyed dictionaries of these,
/// in which NSNull may stand as well), or removes what is stored if the value is nil. `expireSec` is the lifetime in
/// seconds; without one, the value never expires, even if an earlier value under the key had a lifetime. Any other
/// value, NSNull itself, and one that nests deeper than 512 levels, logs one error line and changes nothing.
+ (void)set:(nullable id)value forKey:(NSString*)key expireSec:(nullable NSNumber*)expireSec NS_REFINED_FOR_SWIFT;
/// The stored value. One that is older than its lifetime is removed and reported as nil.
+ (nullable id)getForKey:(NSString*)key NS_SWIFT_NAME(get(forKey:));
/// The stored value if it is text, else nil.
+ (nullable NSString*)getStringForKey:(NSString*)key NS_SWIFT_NAME(getString(forKey:));
+ (void)removeForKey:(NSString*)key NS_SWIFT_NAME(remove(forKey:));

/// Stores the shop id for a day.
+ (void)saveShopId:(NSString*)shopId;
+ (nullable NSString*)getValidShopId;

/// Appends an event to the queue, unchanged. What is no property list (NSNull is allowed), and an event that nests
/// deeper than 510 levels, is dropped with one error line.
+ (void)saveEventTrackingData:(NSDictionary<NSString*, id>*)event;
/// The queue, oldest event first. Empty if nothing, or something else, is stored.
+ (NSArray<NSDictionary<NSString*, id>*>*)getEventTrackingData;
/// Removes the `count` oldest events, or all if there are fewer. A negative count logs one error line and changes
/// nothing.
+ (void)removeEventTrackingDataWithCount:(NSInteger)count NS_SWIFT_NAME(removeEventTrackingData(count:));
+ (void)clearEventTrackingData;

@end

NS_ASSUME_NONNULL_END
