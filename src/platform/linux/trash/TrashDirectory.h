#pragma once

#include "disk/Descriptor.h"
#include "disk/OpenFolders.h"
#include "trash/TrashSession.h"

#include <expected>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// A Trash folder that is open: it stays the same one, whatever becomes of its path. Everything answers 0 or an errno.
/// Its folders get the rights that the work needs, and their own mode back at the end.
class TrashDirectory {
public:
    /// `trash` is open, a folder of the user's own, and stands for `place`.
    TrashDirectory(Descriptor trash, TrashFolder place);
    TrashDirectory(const TrashDirectory&) = delete;
    TrashDirectory& operator=(const TrashDirectory&) = delete;
    ~TrashDirectory();

    /// Opens files and info, for a Trash that is filled also the missing ones; the same answer each time.
    int open();
    int make();

    [[nodiscard]] const TrashFolder& place() const { return place_; }
    [[nodiscard]] int files() const { return files_.get(); }
    /// Of what lies in it.
    [[nodiscard]] std::uint64_t device() const { return device_; }

    /// Writes the restore note for an item of that name and answers the name that it gets.
    std::expected<std::string, int> writeNote(const std::string& name, const std::string& text);
    int removeNote(const std::string& name);
    /// Removes the notes without an item of which `isMeant` says so, by the item's name and their text.
    void forgetNotes(const std::function<bool(const std::string& item, std::string_view note)>& isMeant);
    /// The item's name was used or is free by now: a size that is known under it holds no longer.
    void forgetSize(const std::string& name) { sizesToForget_.insert(name); }

    /// A folder of this clean alone, for items on their way out; its names begin with the prefix.
    struct PrivateFolder {
        int folder = -1;
        std::string prefix;
    };
    std::expected<PrivateFolder, int> privateFolder();

    /// To be called before the first change: gives its folders the rights that the work needs.
    void begin();
    /// Puts back what an interrupted clean has left on its way out, and removes its temporary files.
    void recover();
    /// Forgets sizes, waits for the disk, and gives modes back.
    void finish();

private:
    int access(Descriptor& folder, int above, const char* name);
    void raise(int folder);
    void recoverFolder(int above, const std::string& name);
    void recoverItem(int folder, const std::string& from, const std::string& name);
    void rewriteSizes();

    Descriptor trash_;
    Descriptor files_;
    Descriptor info_;
    Descriptor private_; ///< locked as long as it is in use
    std::string privateName_;
    bool madeExpunged_ = false;
    bool changed_ = false;
    TrashFolder place_;
    std::uint64_t device_ = 0;
    std::size_t nameLimit_ = 255;
    std::vector<std::pair<Descriptor, mode_t>> modes_; ///< to be given back
    std::map<std::string, unsigned> nextNumbers_;      ///< of names that were taken
    std::set<std::string> sizesToForget_;
};

} // namespace vellmoor
