#include "LargeFiles.h"

namespace vellmoor {

std::vector<ScannedPath> largeFiles(ScanContext&, std::size_t) {
    return {};
}
std::vector<CleanupItem> largeFileItems(ScanContext&, bool) {
    return {};
}
std::vector<FileCandidate> makeFileCandidates(const ScanContext&, const std::vector<CleanupItem>&) {
    return {};
}

} // namespace vellmoor
