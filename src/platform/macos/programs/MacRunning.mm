// Running applications, by AppKit. The list follows the system only while the main run loop runs; without one it
// stays as it was at the first call.
#include "MacPlatform.h"
#include "programs/QuitAnswers.h"
#include "values/FoundationValues.h"

#import <AppKit/AppKit.h>

namespace vellmoor {

using mac::pathOf;
using mac::stringIn;
using mac::textOf;

std::vector<RunningApplication> MacPlatform::runningApplications() const {
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

// Asks every process of the bundle at that path; each may still ask its user.
QuitOutcome MacPlatform::requestQuit(const MemoryApp& app) const {
    if (!app.path) {
        return QuitOutcome::NotRunning;
    }
    @autoreleasepool {
        const Path wanted = mac::standardized(*app.path);
        std::vector<bool> answers;
        for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
            if (!application.terminated && pathOf(application.bundleURL) == wanted) {
                answers.push_back([application terminate] == YES);
            }
        }
        return mac::quitOutcome(answers);
    }
}

} // namespace vellmoor
