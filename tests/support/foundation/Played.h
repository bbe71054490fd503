// What the classes that are played share.
#pragma once

#include "Stage.h"

#import <AppKit/AppKit.h>
#include <filesystem>
#include <string>
#include <vector>

#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wprotocol"
#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"
#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wobjc-property-implementation"

namespace vellmoor::test::played {

/// What an object remembers. It stands beside the object, as Apple's declarations have no room in it.
struct Remembered {
    id target = nil;
    SEL action = nullptr;
    id represented = nil;
    id submenu = nil;
    std::string title;
    std::string key;
    double width = 0;
    double height = 0;
    std::vector<id> items;
};

Remembered& of(id object);

/// Empty for nil.
std::string textOf(NSString* text);
NSString* objectOf(const std::string& text);
std::filesystem::path pathOf(NSURL* address);
/// One of Foundation's own, with its sentence.
NSError* errorOf(NSInteger code, const std::string& sentence);

/// -removeItemAtURL:error: of a file manager that has a delegate.
bool removeAsked(NSFileManager* manager, NSURL* address, NSError** error);

/// The menu bar; empty at the start.
NSMenu* mainMenu();
/// A menu as a user sees it.
std::vector<StagedMenuItem> shown(NSMenu* menu);

} // namespace vellmoor::test::played
