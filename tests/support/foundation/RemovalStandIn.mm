// A removal by Foundation that a delegate is asked about, as Apple describes it: before each item, a folder before what
// it holds. What is refused stays, with all that it holds, and then the folder above cannot go: an error, which ends
// the removal. An item that is refused itself is no error.
#include "Played.h"

#include <algorithm>
#include <vector>

namespace vellmoor::test::played {
namespace {

namespace fs = std::filesystem;

class Removal {
public:
    explicit Removal(NSFileManager* manager) : manager_(manager) {}

    /// False when the removal has to end here.
    bool remove(const fs::path& path) {
        if (!mayGo(path)) {
            return true;
        }
        if (fs::is_directory(fs::symlink_status(path))) {
            std::vector<fs::path> held;
            for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
                held.push_back(entry.path());
            }
            std::ranges::sort(held);
            for (const fs::path& entry : held) {
                if (!remove(entry)) {
                    return false;
                }
            }
        }
        std::error_code failure;
        fs::remove(path, failure);
        failed = failure ? path : failed;
        return !failure;
    }

    fs::path failed;

private:
    // The newer method is preferred, and the older one is not asked besides.
    bool mayGo(const fs::path& path) {
        if (stage().beforeRemoval) {
            stage().beforeRemoval(path);
        }
        id<NSFileManagerDelegate> delegate = manager_.delegate;
        if ([delegate respondsToSelector:@selector(fileManager:shouldRemoveItemAtURL:)]) {
            return [delegate fileManager:manager_
                   shouldRemoveItemAtURL:[NSURL fileURLWithPath:objectOf(path.string())]];
        }
        return ![delegate respondsToSelector:@selector(fileManager:shouldRemoveItemAtPath:)] ||
               [delegate fileManager:manager_ shouldRemoveItemAtPath:objectOf(path.string())];
    }

    NSFileManager* manager_;
};

} // namespace

bool removeAsked(NSFileManager* manager, NSURL* address, NSError** error) {
    constexpr NSInteger noPermission = 513; // also for a folder that is not empty
    Removal removal(manager);
    if (removal.remove(pathOf(address))) {
        return true;
    }
    *error = errorOf(noPermission, "\"" + removal.failed.filename().string() +
                                       "\" couldn't be removed because you don't have permission to access it.");
    return false;
}

} // namespace vellmoor::test::played
