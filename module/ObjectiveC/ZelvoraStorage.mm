#import "module/ObjectiveC/ZelvoraStorage.h"

#include "ZelvoraAdapters/uikit/Foundation/Values.h"
#include "ZelvoraAdapters/uikit/Host.h"
#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraStorage.h"

#include <optional>

namespace platform = zelvora::platform;
using Storage = zelvora::ZelvoraStorage;
using zelvora::uikit::objectOf;
using zelvora::uikit::stringOf;
using zelvora::uikit::textOf;
using zelvora::uikit::valueOf;

@implementation ZelvoraStorage

+ (void)initialize
{
    zelvora::uikit::install();
}

+ (void)set:(id)value forKey:(NSString*)key expireSec:(NSNumber*)expireSec
{
    auto const lifetime = expireSec ? std::optional<double>(expireSec.doubleValue) : std::nullopt;
    if (!value) {
        Storage::set(std::nullopt, textOf(key), lifetime);
        return;
    }
    // What no property list can hold counts as a null marker, which the store refuses.
    Storage::set(valueOf(value).value_or(platform::Null()), textOf(key), lifetime);
}

+ (id)getForKey:(NSString*)key
{
    auto const value = Storage::get(textOf(key));
    return value ? objectOf(*value) : nil;
}

+ (NSString*)getStringForKey:(NSString*)key
{
    auto const text = Storage::getString(textOf(key));
    return text ? stringOf(*text) : nil;
}

+ (void)removeForKey:(NSString*)key
{
    Storage::remove(textOf(key));
}

+ (void)saveShopId:(NSString*)shopId
{
    Storage::saveShopId(textOf(shopId));
}

+ (NSString*)getValidShopId
{
    auto const shopId = Storage::getValidShopId();
    return shopId ? stringOf(*shopId) : nil;
}

+ (void)saveEventTrackingData:(NSDictionary<NSString*, id>*)event
{
    auto const value = valueOf(event);
    if (auto const* dictionary = value ? value->dictionary() : nullptr)
        Storage::saveEventTrackingData(*dictionary);
    else
        zelvora::ZelvoraLogger::e("saveEventTrackingData refused an event that is not a property list");
}

+ (NSArray<NSDictionary<NSString*, id>*>*)getEventTrackingData
{
    NSArray* const events = objectOf(Storage::getEventTrackingData());
    return events ? events : @[];
}

+ (void)removeEventTrackingDataWithCount:(NSInteger)count
{
    Storage::removeEventTrackingData(count);
}

+ (void)clearEventTrackingData
{
    Storage::clearEventTrackingData();
}

@end
