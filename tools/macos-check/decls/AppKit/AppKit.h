// Documented interfaces of AppKit that Vellmoor calls, for the check on Linux only.
#pragma once
#import <AppKit/Application.h>
#import <AppKit/Controls.h>
#import <AppKit/Images.h>
#import <AppKit/Workspace.h>
