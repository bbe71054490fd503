// What the stand-ins for Apple's classes show to the program, and what it did to them. Foundation itself is GNUstep's;
// only what that lacks is played here (FoundationStandIns.mm, RemovalStandIn.mm), and AppKit as a whole.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vellmoor::test {

struct StagedVolume {
    std::filesystem::path path;
    std::optional<std::string> name;
    bool isHidden = false;
};

struct StagedApplication {
    int pid = 0;
    std::string name;
    std::optional<std::string> identifier;
    std::filesystem::path bundle; ///< empty: none
    bool isTerminated = false;
    bool isActive = false;
    bool takesRequests = true; ///< what -terminate answers
    int requests = 0;          ///< how often it was asked to quit
};

struct StagedMenuItem {
    std::string title; ///< empty for a separator
    std::string action;
    std::string key;

    bool operator==(const StagedMenuItem&) const = default;
};

/// A note in the notification centre.
struct StagedNote {
    std::string name; ///< another note of this name takes its place
    std::string title;
    std::string text;
    bool isAtOnce = false; ///< it waits for nothing

    bool operator==(const StagedNote&) const = default;
};

/// A picture that was drawn: into what, and how.
struct StagedDrawing {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    std::size_t bytesPerRow = 0;
    unsigned bitmapInfo = 0; ///< CGBitmapInfo with the place of alpha
};

/// One for the whole program; a test sets it up anew by reset().
struct Stage {
    std::filesystem::path home = "/Users/anna";
    std::filesystem::path trash;       ///< where trashed items go; empty: the volume has none
    std::string trashFailure;          ///< the system's sentence then
    std::function<void()> beforeTrash; ///< what somebody does between the last look at an item and its move
    std::function<void(const std::filesystem::path&)> beforeRemoval; ///< of each entry that a delegate is asked about
    std::string volumeNumber;               ///< the UUID of every volume; empty: none tells one
    std::vector<StagedVolume> volumes;      ///< in the system's order
    std::optional<std::int64_t> totalBytes; ///< of every volume
    std::optional<std::int64_t> importantBytes;
    std::optional<std::int64_t> plainBytes; ///< what is free without anything given up: not what is asked for
    std::set<std::string> packages;         ///< extensions with the dot
    std::vector<StagedApplication> applications;

    // AppKit
    bool hasLaunched = false;
    unsigned long eventType = 0;       ///< of the event that is being handled
    bool respondersTakeActions = true; ///< what -sendAction:to:from: answers
    bool isMiniaturized = false;
    bool reducesMotion = false;
    bool increasesContrast = false;
    double imageWidth = 20; ///< of symbols, which come in their own size
    double imageHeight = 10;
    std::set<std::string> symbols{"sparkles"};

    std::map<std::string, std::vector<StagedMenuItem>> menuBar; ///< by the menu's title
    std::vector<std::vector<StagedMenuItem>> popUps;            ///< menus shown at the status item
    double popUpHeight = 0;                                     ///< where the last one stood
    int statusItems = 0;                                        ///< in the menu bar now
    bool isTemplate = false;                                    ///< the status item's picture
    unsigned long long statusEvents = 0;                        ///< the events that its button is told of
    std::vector<std::string> calls;  ///< of the application, its window, the workspace, in order
    std::vector<std::string> alerts; ///< "title: text"
    std::vector<StagedDrawing> drawings;
    unsigned long long activity = 0; ///< the options of the activity that goes on; 0: none
    std::set<std::pair<std::uint32_t, std::uint32_t>> appleEvents; ///< those with a handler of the program's own

    // UserNotifications
    std::string ownBundle;                       ///< its identifier; empty: the program was not started from a bundle
    bool findsCentre = true;                     ///< else the notification centre cannot be had even so
    std::vector<unsigned long> permissionsAsked; ///< the options of each question
    std::string noteFailure;                     ///< why no note can be shown
    std::vector<StagedNote> notes;               ///< those that are shown

    std::vector<std::string> addresses;     ///< made of paths, "folder" or "file" before each
    std::vector<std::string> relativeDates; ///< each "style locale seconds"
};

Stage& stage();
/// Everything as at the start.
void resetStage();

// What a user or the system does.
void finishLaunching();
/// Makes the one application, as the start of a program does.
void startApplication();
/// The events of `eventType` that the button is not told of do nothing.
void clickStatusItem(unsigned long eventType);
/// An item of the menu bar, or of the menu last shown at the status item when `menu` is empty; false: there is none.
bool chooseMenuItem(const std::string& menu, const std::string& title);
/// False when AppKit's own handler would have it.
bool sendAppleEvent(const char* eventClass, const char* eventId);
/// The user's answer to the questions whether notes may be shown; `refusal` is what the system adds to a no.
void answerPermission(bool isGranted, const std::string& refusal = "");
/// A click on a note, or on a button of it; whether the program took it. What it does later waits for runMainQueue().
bool clickNote(const std::string& action = "com.apple.UNNotificationDefaultActionIdentifier");
/// How the program wants a note shown while it is in front: UNNotificationPresentationOptions.
unsigned long presentNote();
/// The main thread comes to what was put into its queue.
void runMainQueue();
/// A native view, in a window of its own.
std::uintptr_t nativeView();

} // namespace vellmoor::test
