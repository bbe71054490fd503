#pragma once

#include "found/CleanerModule.h"
#include "found/ScanSnapshot.h"

#include <string>

namespace vellmoor::terminal {

struct ReportOptions {
    CleanerModule module = CleanerModule::smartScan;
    std::string home;    ///< as it is shown
    bool isBold = false; ///< headings with a terminal's bold face
    /// For somebody who is going to clean: every row, with its key in place of its description, what is held back, and
    /// nothing about the machine but its disk.
    bool isForCleaning = false;
};

/// A scan as a page of text in the current language: the rows by module, the disk, the memory, the login items and
/// the permissions.
std::string report(const ScanSnapshot& snapshot, const ReportOptions& options);

} // namespace vellmoor::terminal
