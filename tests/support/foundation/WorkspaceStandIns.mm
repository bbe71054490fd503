// Running applications and the workspace.
#include "Played.h"

using namespace vellmoor::test;
using namespace vellmoor::test::played;

/// What the workspace answers: one of the stage's applications.
@interface StandInApplication : NSRunningApplication {
@public
    StagedApplication* staged;
}
@end

@implementation NSRunningApplication
+ (NSRunningApplication*)currentApplication {
    static NSRunningApplication* only = [[NSRunningApplication alloc] init];
    return only;
}
- (BOOL)isFinishedLaunching {
    return stage().hasLaunched;
}
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
- (BOOL)openURL:(NSURL*)url {
    stage().calls.push_back("open " + textOf(url.absoluteString));
    return YES;
}
- (void)activateFileViewerSelectingURLs:(NSArray*)addresses {
    for (NSURL* address in addresses) {
        stage().calls.push_back("reveal " + textOf(address.path));
    }
}
- (NSImage*)iconForFile:(NSString*)path {
    stage().calls.push_back("icon " + textOf(path));
    NSImage* image = [[NSImage alloc] init];
    of(image).width = of(image).height = 32; // Finder's small size, until another is set
    return image;
}
- (BOOL)accessibilityDisplayShouldReduceMotion {
    return stage().reducesMotion;
}
- (BOOL)accessibilityDisplayShouldIncreaseContrast {
    return stage().increasesContrast;
}
@end
