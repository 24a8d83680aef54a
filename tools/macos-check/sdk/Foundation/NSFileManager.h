#pragma once

#include <Foundation/NSArray.h>
#include <Foundation/NSURL.h>

#pragma clang assume_nonnull begin

@class NSError;

typedef DECLARE_OPTIONS(NSUInteger, NSDirectoryEnumerationOptions){
    NSDirectoryEnumerationSkipsHiddenFiles = 1UL << 2,
};

@interface NSFileManager : NSObject
@property(class, readonly, strong) NSFileManager* defaultManager;
- (nullable NSArray<NSURL*>*)contentsOfDirectoryAtURL:(NSURL*)url
                           includingPropertiesForKeys:(nullable NSArray<NSURLResourceKey>*)keys
                                              options:(NSDirectoryEnumerationOptions)mask
                                                error:(NSError* _Nullable* _Nullable)error;
@end

DECLARE_EXTERN NSString* NSHomeDirectory(void);

#pragma clang assume_nonnull end
