// Documented interfaces of Foundation that Vellmoor calls, for the check on Linux only: on a Mac the SDK's own headers
// are used. A call that is not declared here does not compile in the check; add its documented signature.
#pragma once
#import <Foundation/Basics.h>
#import <Foundation/Collections.h>
#import <Foundation/Files.h>
#import <Foundation/System.h>
#import <Foundation/Values.h>
