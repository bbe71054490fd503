#include "MacRunning.h"

#include "FoundationValues.h"

#import <AppKit/AppKit.h>

namespace vellmoor::mac {

std::vector<RunningApplication> runningApplications() {
    @autoreleasepool {
        std::vector<RunningApplication> running;
        for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
            if (application.terminated) {
                continue;
            }
            running.push_back({.pid = application.processIdentifier,
                               .name = textOf(application.localizedName),
                               .bundleIdentifier = stringIn(application.bundleIdentifier),
                               .bundlePath = pathOf(application.bundleURL),
                               .isActive = application.active == YES});
        }
        return running;
    }
}

QuitOutcome requestQuit(const Path& bundle) {
    @autoreleasepool {
        const Path wanted = standardized(bundle);
        bool isRunning = false;
        bool isSent = false;
        for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
            if (application.terminated || pathOf(application.bundleURL) != wanted) {
                continue;
            }
            isRunning = true;
            if ([application terminate]) {
                isSent = true;
            }
        }
        if (!isRunning) {
            return QuitOutcome::NotRunning;
        }
        return isSent ? QuitOutcome::Requested : QuitOutcome::NoResponse;
    }
}

} // namespace vellmoor::mac
