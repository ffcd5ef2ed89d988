// The declarations of Apple's Foundation that the products use, as in Apple's public headers.
//
// The products' tests run with GNUstep. They do not prove that Apple's compiler accepts the sources
// and understands them in the same way. So apple_declarations_test.py compiles the sources with
// these headers instead of GNUstep's. It compares each declaration with GNUstep's, and refuses a
// declaration that no product uses.
//
// To use another method, add it from Apple's documentation to its class, with the superclass and
// the protocols that the use relies on. Write a property as its accessors. Leave out generic
// arguments, availability and Swift names. Keep nullability and other attributes, because compilers
// warn by them.
#pragma once

#ifndef VELMORA_BOOL_IS_BOOL
#error "BOOL is bool on one of Apple's processors and signed char on the other: choose one"
#endif

#if VELMORA_BOOL_IS_BOOL
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr

#define NS_DESIGNATED_INITIALIZER __attribute__((objc_designated_initializer))
#define NS_FORMAT_ARGUMENT(A) __attribute__((format_arg(A)))
#define NS_FORMAT_FUNCTION(F, A) __attribute__((format(__NSString__, F, A)))

#pragma clang assume_nonnull begin

typedef long NSInteger;
typedef unsigned long NSUInteger;

@class NSArray, NSCoder, NSData, NSDictionary, NSError, NSString, NSURL;

typedef NSString* NSErrorDomain;
typedef NSString* NSErrorUserInfoKey;
typedef NSString* NSNotificationName;

typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding { NSUTF8StringEncoding = 4, NSISOLatin1StringEncoding = 5 };

typedef enum NSSearchPathDirectory : NSUInteger {
  NSApplicationSupportDirectory = 14
} NSSearchPathDirectory;

typedef enum NSSearchPathDomainMask : NSUInteger { NSUserDomainMask = 1 } NSSearchPathDomainMask;

typedef struct CGPoint {
  double x;
  double y;
} CGPoint;
typedef struct CGSize {
  double width;
  double height;
} CGSize;
typedef struct CGRect {
  CGPoint origin;
  CGSize size;
} CGRect;
typedef CGRect NSRect;

typedef struct {
  unsigned long state;
  id __unsafe_unretained _Nullable* _Nullable itemsPtr;
  unsigned long* _Nullable mutationsPtr;
  unsigned long extra[5];
} NSFastEnumerationState;

extern "C" {

extern const NSRect NSZeroRect;
extern NSErrorUserInfoKey const NSLocalizedDescriptionKey;

void NSLog(NSString* format, ...) NS_FORMAT_FUNCTION(1, 2);

}  // extern "C"

// Protocols

@protocol NSObject
- (BOOL)isKindOfClass:(Class)aClass;
- (instancetype)retain;
- (oneway void)release;
- (instancetype)autorelease;
@end

@protocol NSCopying
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

@class NSExtensionContext;

@protocol NSExtensionRequestHandling <NSObject>
- (void)beginRequestWithExtensionContext:(NSExtensionContext*)context;
@end

// Classes

__attribute__((objc_root_class))
@interface NSObject<NSObject>
+ (instancetype)alloc;
+ (Class)class;
- (id)copy;
@end

@interface NSArray : NSObject <NSCopying, NSSecureCoding, NSFastEnumeration>
/// The compiler calls this for `@[…]`.
+ (instancetype)arrayWithObjects:(const id _Nonnull[_Nonnull])objects count:(NSUInteger)cnt;
@end

@interface NSBundle : NSObject
+ (NSBundle*)mainBundle;
- (nullable instancetype)initWithPath:(NSString*)path NS_DESIGNATED_INITIALIZER;
- (nullable NSString*)bundleIdentifier;
- (nullable NSString*)pathForResource:(nullable NSString*)name ofType:(nullable NSString*)ext;
- (NSString*)localizedStringForKey:(NSString*)key
                             value:(nullable NSString*)value
                             table:(nullable NSString*)tableName NS_FORMAT_ARGUMENT(1);
@end

@interface NSCoder : NSObject
@end

@interface NSData : NSObject <NSCopying, NSSecureCoding>
- (NSUInteger)length;
- (const void*)bytes;
@end

@interface NSDictionary : NSObject <NSCopying, NSSecureCoding, NSFastEnumeration>
/// The compiler calls this for `@{…}`.
+ (instancetype)dictionaryWithObjects:(const id _Nonnull[_Nullable])objects
                              forKeys:(const id<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)cnt;
@end

@interface NSNotificationCenter : NSObject
@end

@interface NSDistributedNotificationCenter : NSNotificationCenter
+ (NSDistributedNotificationCenter*)defaultCenter;
- (void)postNotificationName:(NSNotificationName)name
                      object:(nullable NSString*)object
                    userInfo:(nullable NSDictionary*)userInfo
          deliverImmediately:(BOOL)deliverImmediately;
@end

@interface NSError : NSObject <NSCopying, NSSecureCoding>
+ (instancetype)errorWithDomain:(NSErrorDomain)domain
                           code:(NSInteger)code
                       userInfo:(nullable NSDictionary*)dict;
- (NSErrorDomain)domain;
- (NSInteger)code;
- (NSString*)localizedDescription;
@end

@interface NSExtensionContext : NSObject
- (NSArray*)inputItems;
- (void)completeRequestReturningItems:(nullable NSArray*)items
                    completionHandler:(void (^_Nullable)(BOOL expired))completionHandler;
- (void)cancelRequestWithError:(NSError*)error;
@end

@interface NSExtensionItem : NSObject <NSCopying, NSSecureCoding>
- (nullable NSArray*)attachments;
@end

@interface NSFileManager : NSObject
+ (NSFileManager*)defaultManager;
- (NSArray*)URLsForDirectory:(NSSearchPathDirectory)directory
                   inDomains:(NSSearchPathDomainMask)domainMask;
- (nullable NSURL*)containerURLForSecurityApplicationGroupIdentifier:(NSString*)groupIdentifier;
@end

typedef void (^NSItemProviderCompletionHandler)(__kindof id<NSSecureCoding> _Nullable item,
                                                NSError* _Null_unspecified error);

@interface NSItemProvider : NSObject <NSCopying>
- (BOOL)hasItemConformingToTypeIdentifier:(NSString*)typeIdentifier;
- (void)loadItemForTypeIdentifier:(NSString*)typeIdentifier
                          options:(nullable NSDictionary*)options
                completionHandler:(nullable NSItemProviderCompletionHandler)completionHandler;
@end

@interface NSLocale : NSObject <NSCopying, NSSecureCoding>
+ (NSArray*)preferredLanguages;
@end

@interface NSString : NSObject <NSCopying, NSSecureCoding>
- (nullable instancetype)initWithBytes:(const void*)bytes
                                length:(NSUInteger)len
                              encoding:(NSStringEncoding)encoding;
- (NSUInteger)length;
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)encoding;
- (NSString*)stringByReplacingOccurrencesOfString:(NSString*)target
                                       withString:(NSString*)replacement;
- (NSString*)stringByStandardizingPath;
@end

@interface NSURL : NSObject <NSCopying, NSSecureCoding>
+ (NSURL*)fileURLWithPath:(NSString*)path;
+ (nullable instancetype)URLWithString:(NSString*)URLString;
+ (NSURL*)absoluteURLWithDataRepresentation:(NSData*)data relativeToURL:(nullable NSURL*)baseURL;
- (nullable NSString*)absoluteString;
- (nullable NSString*)path;
- (BOOL)isFileURL;
- (nullable NSURL*)filePathURL;
- (nullable NSURL*)URLByStandardizingPath;
@end

@interface NSUserDefaults : NSObject
- (nullable instancetype)initWithSuiteName:(nullable NSString*)suitename NS_DESIGNATED_INITIALIZER;
- (nullable NSString*)stringForKey:(NSString*)defaultName;
@end

#pragma clang assume_nonnull end
