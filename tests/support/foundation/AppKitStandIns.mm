#include "Stage.h"

#import <AppKit/AppKit.h>

#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wobjc-property-implementation"

using vellmoor::test::StagedApplication;

/// What the workspace answers: one of the stage's applications.
@interface StandInApplication : NSRunningApplication {
@public
    StagedApplication* staged;
}
@end

@implementation NSRunningApplication
@end

@implementation StandInApplication
- (BOOL)isTerminated {
    return staged->isTerminated;
}
- (BOOL)isActive {
    return staged->isActive;
}
- (NSString*)localizedName {
    return [NSString stringWithUTF8String:staged->name.c_str()];
}
- (NSString*)bundleIdentifier {
    return staged->identifier ? [NSString stringWithUTF8String:staged->identifier->c_str()] : nil;
}
- (NSURL*)bundleURL {
    return staged->bundle.empty()
               ? nil
               : [NSURL fileURLWithPath:[NSString stringWithUTF8String:staged->bundle.c_str()] isDirectory:YES];
}
- (pid_t)processIdentifier {
    return staged->pid;
}
- (BOOL)terminate {
    ++staged->requests;
    return staged->takesRequests;
}
@end

@implementation NSWorkspace
+ (NSWorkspace*)sharedWorkspace {
    static NSWorkspace* only = [[NSWorkspace alloc] init];
    return only;
}
- (NSArray*)runningApplications {
    NSMutableArray* running = [NSMutableArray array];
    for (StagedApplication& application : vellmoor::test::stage().applications) {
        StandInApplication* shown = [[[StandInApplication alloc] init] autorelease];
        shown->staged = &application;
        [running addObject:shown];
    }
    return running;
}
@end
