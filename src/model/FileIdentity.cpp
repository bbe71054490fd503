#include "FileIdentity.h"

namespace vellmoor {

bool isSame(const FileIdentity& shown, const FileIdentity& found, Sameness wanted) {
    if (shown.device != found.device || shown.kind != found.kind) {
        return false;
    }
    if (wanted == Sameness::Kind) {
        return true;
    }
    if (wanted == Sameness::File) {
        return shown.inode == found.inode;
    }
    const bool sameContent =
        shown.kind != FileKind::File || (shown.length == found.length && shown.modified == found.modified);
    return shown.inode == found.inode && sameContent;
}

} // namespace vellmoor
