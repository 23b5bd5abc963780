// Own, minimal declarations of the Foundation API the adapter uses (compile gate only; never shipped).
#pragma once
#import <objc/NSObject.h>
#include <objc/objc.h>
#include <stddef.h>
#include <stdint.h>
#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_ENUM(_type, _name)                                                                                          \
    enum __attribute__((enum_extensibility(open))) _name : _type _name;                                                \
    enum _name : _type
#define NS_CLOSED_ENUM(_type, _name)                                                                                   \
    enum __attribute__((enum_extensibility(closed))) _name : _type _name;                                              \
    enum _name : _type
#ifdef __cplusplus
#define NS_OPTIONS(_type, _name)                                                                                       \
    _type _name;                                                                                                       \
    enum __attribute__((flag_enum, enum_extensibility(open))) : _type
#else
#define NS_OPTIONS(_type, _name)                                                                                       \
    enum __attribute__((flag_enum, enum_extensibility(open))) _name : _type _name;                                     \
    enum _name : _type
#endif
#define NS_ERROR_ENUM(_domain, _name)                                                                                  \
    enum _name : NSInteger _name;                                                                                      \
    enum __attribute__((ns_error_domain(_domain))) _name : NSInteger
#define ZELVORA_SWIFT_BRIDGE(n) __attribute__((swift_bridge(n)))
#define NS_SWIFT_NAME(n) __attribute__((swift_name(#n)))
#define NS_SWIFT_UNAVAILABLE(m) __attribute__((availability(swift, unavailable, message = m)))
#define NS_REFINED_FOR_SWIFT __attribute__((swift_private))
#define NS_SWIFT_NOTHROW __attribute__((swift_error(none)))
#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_UNAVAILABLE __attribute__((unavailable))
#define NS_NOESCAPE __attribute__((noescape))
#define NS_RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))
#define NS_REQUIRES_SUPER __attribute__((objc_requires_super))
#define NS_REQUIRES_NIL_TERMINATION __attribute__((sentinel(0, 1)))
#define NS_FORMAT_FUNCTION(a, b) __attribute__((format(__NSString__, a, b)))
#define NS_EXTENSIBLE_STRING_ENUM __attribute__((swift_wrapper(struct)))
#define NS_SWIFT_UI_ACTOR __attribute__((swift_attr("@UIActor")))
#define NS_SWIFT_SENDABLE __attribute__((swift_attr("@Sendable")))
#define API_AVAILABLE_IOS(v) __attribute__((availability(ios, introduced = v)))
#ifdef __cplusplus
#define FOUNDATION_EXPORT extern "C"
#else
#define FOUNDATION_EXPORT extern
#endif
#define FOUNDATION_EXTERN FOUNDATION_EXPORT
typedef double NSTimeInterval;
typedef double CGFloat;
typedef struct {
    NSUInteger location, length;
} NSRange;
typedef struct {
    unsigned long state;
    id __unsafe_unretained* itemsPtr;
    unsigned long* mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;
NS_ASSUME_NONNULL_BEGIN
@class NSString, NSArray<ObjectType>, NSDictionary<KeyType, ObjectType>, NSError, NSData, NSMethodSignature,
    NSInvocation;
@protocol NSCopying
- (id)copyWithZone:(nullable struct _NSZone*)zone;
@end
@protocol NSCoding
@end
@protocol NSSecureCoding <NSCoding>
@end
@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)len;
@end
@interface NSObject (NSCopyingAndKVO)
- (id)copy;
- (void)observeValueForKeyPath:(nullable NSString*)keyPath
                      ofObject:(nullable id)object
                        change:(nullable NSDictionary<NSString*, id>*)change
                       context:(nullable void*)context;
@end
typedef NS_OPTIONS(NSUInteger, NSKeyValueObservingOptions) {
    NSKeyValueObservingOptionNew = 0x01,
    NSKeyValueObservingOptionOld = 0x02
};
@interface NSObject (NSKeyValueObserverRegistration)
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(nullable void*)context;
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(nullable void*)context;
@end
typedef unsigned short unichar;
typedef NSUInteger NSStringEncoding;
enum { NSUTF8StringEncoding = 4 };
ZELVORA_SWIFT_BRIDGE("Swift.String") @interface NSString : NSObject<NSCopying, NSSecureCoding>
@property (readonly) NSUInteger length;
@property (nullable, readonly) const char* UTF8String;
+ (nullable instancetype)stringWithUTF8String:(char const*)s;
- (nullable instancetype)initWithBytes:(void const*)bytes length:(NSUInteger)len encoding:(NSStringEncoding)e;
+ (instancetype)stringWithFormat:(NSString*)format, ... NS_FORMAT_FUNCTION(1, 2);
- (BOOL)isEqualToString:(NSString*)s;
- (void)getCharacters:(unichar*)buffer range:(NSRange)range;
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)e;
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)e allowLossyConversion:(BOOL)lossy;
+ (instancetype)string;
@end
@interface NSConstantString : NSString
@end
@interface NSValue : NSObject <NSCopying>
@property (readonly) const char* objCType NS_RETURNS_INNER_POINTER;
@end
@interface NSNumber : NSValue
+ (NSNumber*)numberWithBool:(BOOL)v;
+ (NSNumber*)numberWithInt:(int)v;
+ (NSNumber*)numberWithInteger:(NSInteger)v;
+ (NSNumber*)numberWithDouble:(double)v NS_SWIFT_NAME(init(value:));
+ (NSNumber*)numberWithLongLong:(long long)v;
+ (NSNumber*)numberWithUnsignedLongLong:(unsigned long long)v;
@property (readonly) BOOL boolValue;
@property (readonly) long long longLongValue;
@property (readonly) unsigned long long unsignedLongLongValue;
@property (readonly) NSInteger integerValue;
@property (readonly) double doubleValue;
@end
@interface NSNull : NSObject
+ (NSNull*)null;
@end
ZELVORA_SWIFT_BRIDGE("Swift.Array") @interface NSArray<__covariant ObjectType> : NSObject<NSCopying, NSFastEnumeration>
@property (readonly) NSUInteger count;
- (ObjectType)objectAtIndex:(NSUInteger)i;
- (ObjectType)objectAtIndexedSubscript:(NSUInteger)i;
+ (instancetype)arrayWithObjects:(ObjectType const _Nonnull[_Nonnull])objects count:(NSUInteger)cnt;
@end
@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
+ (instancetype)arrayWithCapacity:(NSUInteger)n;
- (void)addObject:(ObjectType)o;
- (void)removeAllObjects;
@end
ZELVORA_SWIFT_BRIDGE("Swift.Dictionary")
@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>
@property (readonly) NSUInteger count;
- (nullable ObjectType)objectForKeyedSubscript:(KeyType)k;
- (nullable ObjectType)objectForKey:(KeyType)k;
+ (instancetype)dictionaryWithObjects:(ObjectType const _Nonnull[_Nullable])objects
                              forKeys:(KeyType<NSCopying> const _Nonnull[_Nullable])keys
                                count:(NSUInteger)cnt;
@end
@interface NSMutableDictionary<KeyType, ObjectType> : NSDictionary <KeyType, ObjectType>
+ (instancetype)dictionaryWithCapacity:(NSUInteger)n;
- (void)setObject:(ObjectType)o forKey:(KeyType<NSCopying>)k;
- (void)removeObjectForKey:(KeyType)k;
- (void)setObject:(nullable ObjectType)o forKeyedSubscript:(KeyType<NSCopying>)k;
@end
@interface NSDate : NSObject <NSCopying>
+ (instancetype)date;
+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)seconds;
@property (readonly) NSTimeInterval timeIntervalSince1970;
@end
@interface NSData : NSObject <NSCopying>
@property (readonly) NSUInteger length;
@property (readonly) const void* bytes NS_REFINED_FOR_SWIFT;
+ (instancetype)dataWithBytes:(nullable const void*)bytes length:(NSUInteger)len;
@end
typedef NSString* NSErrorDomain;
typedef NSString* NSErrorUserInfoKey;
FOUNDATION_EXPORT NSErrorUserInfoKey const NSLocalizedDescriptionKey;
FOUNDATION_EXPORT NSErrorUserInfoKey const NSUnderlyingErrorKey;
typedef NSString* NSKeyValueChangeKey;
ZELVORA_SWIFT_BRIDGE("Swift.Error") @interface NSError : NSObject<NSCopying, NSSecureCoding>
+ (instancetype)errorWithDomain:(NSErrorDomain)domain
                           code:(NSInteger)code
                       userInfo:(nullable NSDictionary<NSErrorUserInfoKey, id>*)dict;
@property (readonly, copy) NSErrorDomain domain;
@property (readonly) NSInteger code;
@property (readonly, copy) NSDictionary<NSErrorUserInfoKey, id>* userInfo;
@property (readonly, copy) NSString* localizedDescription;
@end
@interface NSURL : NSObject <NSCopying>
+ (nullable instancetype)URLWithString:(NSString*)s;
@property (nullable, readonly, copy) NSString* absoluteString;
@property (nullable, readonly, copy) NSString* host;
@property (nullable, readonly, copy) NSString* scheme;
@end
@interface NSURLRequest : NSObject <NSCopying>
+ (instancetype)requestWithURL:(NSURL*)u;
@property (nullable, readonly, copy) NSURL* URL;
@end
@interface NSMutableURLRequest : NSURLRequest
@property (copy) NSString* HTTPMethod;
@property (nullable, copy) NSData* HTTPBody;
@property NSTimeInterval timeoutInterval;
- (void)setValue:(nullable NSString*)value forHTTPHeaderField:(NSString*)field;
@end
FOUNDATION_EXPORT NSErrorDomain const NSURLErrorDomain;
enum : NSInteger { NSURLErrorCancelled = -999, NSURLErrorBadURL = -1000, NSURLErrorUnsupportedURL = -1002 };
@interface NSURLResponse : NSObject <NSCopying>
@end
@interface NSHTTPURLResponse : NSURLResponse
@property (readonly) NSInteger statusCode;
@end
@interface NSURLSessionTask : NSObject
- (void)resume;
@end
@interface NSURLSessionDataTask : NSURLSessionTask
@end
@interface NSOperationQueue : NSObject
- (void)addOperationWithBlock:(void (^)(void))block;
@end
@interface NSURLSession : NSObject
@property (readonly, retain) NSOperationQueue* delegateQueue;
@property (class, readonly, strong) NSURLSession* sharedSession;
- (NSURLSessionDataTask*)dataTaskWithRequest:(NSURLRequest*)request
                           completionHandler:(void (^)(NSData* _Nullable data, NSURLResponse* _Nullable response,
                                                 NSError* _Nullable error))completionHandler;
@end
@interface NSBundle : NSObject
@property (class, readonly, strong) NSBundle* mainBundle;
@property (nullable, readonly, copy) NSString* bundleIdentifier;
@end
@interface NSCoder : NSObject
@end
typedef NSString* NSNotificationName;
@interface NSNotification : NSObject <NSCopying>
@property (readonly, copy) NSNotificationName name;
@property (nullable, readonly, retain) id object;
@property (nullable, readonly, copy) NSDictionary* userInfo;
@end
@interface NSNotificationCenter : NSObject
@property (class, readonly, strong) NSNotificationCenter* defaultCenter;
- (void)postNotificationName:(NSNotificationName)n object:(nullable id)o;
- (void)postNotificationName:(NSNotificationName)n object:(nullable id)o userInfo:(nullable NSDictionary*)info;
- (void)removeObserver:(id)observer;
- (id<NSObject>)addObserverForName:(nullable NSNotificationName)name
                            object:(nullable id)obj
                             queue:(nullable NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification* note))block;
@end
@interface NSUserDefaults : NSObject
@property (class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (nullable id)objectForKey:(NSString*)k;
- (void)setObject:(nullable id)v forKey:(NSString*)k;
- (void)removeObjectForKey:(NSString*)k;
- (nullable NSString*)stringForKey:(NSString*)k;
- (void)setDouble:(double)v forKey:(NSString*)k;
@end
typedef NS_OPTIONS(NSUInteger, NSJSONReadingOptions) { NSJSONReadingMutableContainers = 1 };
typedef NS_OPTIONS(NSUInteger, NSJSONWritingOptions) { NSJSONWritingPrettyPrinted = 1 };
@interface NSJSONSerialization : NSObject
+ (BOOL)isValidJSONObject:(id)obj;
+ (nullable NSData*)dataWithJSONObject:(id)obj options:(NSJSONWritingOptions)opt error:(NSError**)error;
+ (nullable id)JSONObjectWithData:(NSData*)data options:(NSJSONReadingOptions)opt error:(NSError**)error;
@end
@interface NSUUID : NSObject
@property (readonly, copy) NSString* UUIDString;
- (nullable instancetype)initWithUUIDString:(NSString*)s;
@end
FOUNDATION_EXPORT Class _Nullable NSClassFromString(NSString* aClassName);
@interface NSThread : NSObject
@property (class, readonly) BOOL isMainThread;
@end
NS_ASSUME_NONNULL_END
