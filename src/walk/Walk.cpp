// The walk: its workers and what they do with an entry.
//
// The caller's thread is worker 0 and starts alone. Others are started one by one, at its polls, while directories
// wait: a small tree is done before the first poll and never pays for a thread. Every worker has its own reader and
// counter; shared are the queue (WorkQueue.cpp) and what is set before the start.
//
// An entry passes these gates, in this order: hidden; a mount point, so that a dead network mount is not even asked
// for its type; the facts, at most one call and none where the listing says enough; for a directory the device. What
// comes through is shown to the visitor. A directory is entered later, by whoever takes it, and its device is tested
// again on the open descriptor, as something may have been mounted meanwhile.
//
// What is the system's own stands behind DirectoryReader and MountPoints; this file, the places and the queue are
// plain POSIX.
#include "Walk.h"

#include "DirectoryReader.h"
#include "ThreadPolicy.h"
#include "WorkQueue.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <exception>
#include <fcntl.h>
#include <functional>
#include <map>
#include <sys/resource.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace vellmoor::walk {
namespace {

/// Entries between two looks at the flag of cancellation; at most 100 are promised.
constexpr unsigned pollInterval = 64;

bool isWithoutDescriptors(int error) {
    return error == EMFILE || error == ENFILE;
}

// An eighth of what the process may open, so that several walks and the rest of the program find theirs.
std::size_t descriptorsForWaiting() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) {
        return 32;
    }
    return static_cast<std::size_t>(std::clamp<rlim_t>(limit.rlim_cur / 8, 4, 256));
}

// What follows the last dot; empty for ".name" and "name.".
std::string_view extensionOf(std::string_view name) {
    const std::size_t dot = name.find_last_of('.');
    return dot != std::string_view::npos && dot != 0 ? name.substr(dot + 1) : std::string_view();
}

/// What all workers share.
class Walk {
public:
    Walk(const Options& callersOptions, Visitor& callersVisitor, dev_t rootDevice)
        : options(callersOptions),
          visitor(callersVisitor),
          device(rootDevice),
          queue(descriptorsForWaiting()),
          mostWorkers_(workerCount(callersOptions)) {}

    Outcome run(PlaceRef root);
    [[nodiscard]] bool isCancelled() const {
        return options.cancelled != nullptr && options.cancelled->load(std::memory_order_relaxed);
    }
    /// For worker 0 only.
    void addHelperIfUseful();

    const Options& options;
    Visitor& visitor;
    const dev_t device; ///< the root's
    WorkQueue queue;

private:
    void work(unsigned number, Task task) noexcept;

    unsigned mostWorkers_;
    const ThreadUrgency urgency_ = ThreadUrgency::ofThisThread(); ///< the caller's
    std::vector<std::thread> helpers_;
    std::mutex failureMutex_;
    std::exception_ptr failure_; ///< the first thing that a visitor threw
};

class Worker {
public:
    Worker(Walk& walk, unsigned number) : walk_(walk), number_(number), reader_(bool(walk.options.isPackage)) {}
    /// Works until nothing is left. The task is empty, or holds the root, opened.
    void run(Task task);

private:
    bool enter(Task& task);
    bool waitsForDescriptor();
    void read(Place& place);
    void readInBatches(Place& place);
    void readWhole(Place& place);
    bool visitHeld(Place& place);
    void visit(Place& place, RawEntry& raw);
    bool isPackage(const Entry& entry, const RawEntry& raw);
    bool tick(unsigned cost = 1);

    Walk& walk_;
    const unsigned number_;
    unsigned sincePoll_ = 0;
    unsigned waited_ = 0; ///< for a descriptor, in milliseconds
    DirectoryReader reader_;
    std::vector<std::string_view> names_;                ///< a member for its memory
    std::map<std::string, bool, std::less<>> isPackage_; ///< what was answered, by extension
};

void Worker::run(Task task) {
    if (task.place) {
        read(*task.place);
    }
    while (walk_.queue.exchange(task) && enter(task)) {
        if (task.place) {
            read(*task.place);
        }
    }
}

// Opens the directory of the task; where that fails, it is passed over. False: the worker has to leave.
bool Worker::enter(Task& task) {
    constexpr unsigned asManyEntries = 10; // what opening and closing costs
    if (!tick(asManyEntries)) {
        return true;
    }
    int fd = openDirectory(task.parent->fd, task.name.c_str());
    while (fd < 0 && isWithoutDescriptors(errno)) {
        if (!walk_.queue.spareDescriptor()) {
            if (number_ != 0) {
                walk_.queue.giveBack(task);
                return false;
            }
            if (!waitsForDescriptor()) {
                return true;
            }
        }
        fd = openDirectory(task.parent->fd, task.name.c_str());
    }
    struct stat facts{};
    if (fd < 0 || ::fstat(fd, &facts) != 0 || facts.st_dev != walk_.device) {
        if (fd >= 0) {
            ::close(fd);
        }
        return true;
    }
    const MountPoints* const around = task.parent->mounts();
    const MountPoints* const below = around != nullptr ? around->find(task.name) : nullptr;
    task.place = Place::create(task.parent, std::move(task.name), below);
    task.place->fd = fd;
    return true;
}

// Worker 0 stays when others leave, and gives up only after nobody in this walk holds what it needs.
bool Worker::waitsForDescriptor() {
    constexpr unsigned patience = 200;
    if (!walk_.queue.othersAreBusy() && ++waited_ > patience) {
        walk_.queue.noteIncomplete();
        return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return tick(pollInterval);
}

void Worker::read(Place& place) {
    reader_.clear();
    if (walk_.options.wantsNames && place.depth() != 0) {
        readWhole(place);
    } else {
        readInBatches(place);
    }
    if (reader_.isBroken()) {
        walk_.queue.noteIncomplete();
    }
    if (!place.hasWork()) {
        place.close();
    }
}

void Worker::readInBatches(Place& place) {
    while (reader_.replace(place.fd) && visitHeld(place)) {
    }
}

void Worker::readWhole(Place& place) {
    while (reader_.append(place.fd)) {
        if (!tick(pollInterval)) {
            return;
        }
    }
    names_.clear();
    for (RawEntry raw; reader_.next(raw);) {
        names_.push_back(raw.name);
    }
    reader_.rewind();
    const Directory directory{place, place.lastComponent(), place.depth(), names_};
    const Action action = walk_.visitor.directory(directory, number_);
    if (action == Action::Stop) {
        walk_.queue.end(Outcome::Stopped);
    } else if (action == Action::Continue) {
        visitHeld(place);
    }
    if (names_.capacity() > 65536) {
        names_ = {};
    }
}

bool Worker::visitHeld(Place& place) {
    for (RawEntry raw; reader_.next(raw);) {
        if (!tick()) {
            return false;
        }
        visit(place, raw);
    }
    return !walk_.queue.ended();
}

void Worker::visit(Place& place, RawEntry& raw) {
    if (raw.hidden && walk_.options.skipHidden) {
        return;
    }
    if (place.mounts() != nullptr) {
        const MountPoints* const mounts = place.mounts()->find(raw.name);
        if (mounts != nullptr && mounts->isMountPoint()) {
            return;
        }
    }
    if (!raw.complete &&
        (!DirectoryReader::complete(place.fd, walk_.device, raw) || (raw.hidden && walk_.options.skipHidden))) {
        return;
    }
    const Entry entry{place, place.fd, raw.name, raw.type, raw.allocatedBytes, raw.modifiedNs, place.depth() + 1};
    const Action action = walk_.visitor.entry(entry, number_);
    if (action == Action::Stop) {
        walk_.queue.end(Outcome::Stopped);
    } else if (action == Action::Continue && raw.type == EntryType::Directory && !raw.isPlaceholder &&
               !isPackage(entry, raw)) {
        place.addChild(raw.name);
    }
}

// Counts what was done, looks up now and then, and answers whether to go on.
bool Worker::tick(unsigned cost) {
    sincePoll_ += cost;
    if (sincePoll_ >= pollInterval) {
        sincePoll_ = 0;
        if (walk_.isCancelled()) {
            walk_.queue.end(Outcome::Cancelled);
        } else if (number_ == 0) {
            walk_.addHelperIfUseful();
        }
    }
    return !walk_.queue.ended();
}

// Systems declare packages by extension, and asking them is slow: so the answer is kept.
bool Worker::isPackage(const Entry& entry, const RawEntry& raw) {
    constexpr std::size_t mostKept = 1000; // a tree may have a new extension in each name
    const auto& ask = walk_.options.isPackage;
    if (!ask || raw.bundleMark) {
        return ask && ask(entry.path());
    }
    const std::string_view extension = extensionOf(raw.name);
    if (extension.empty()) {
        return false;
    }
    if (const auto known = isPackage_.find(extension); known != isPackage_.end()) {
        return known->second;
    }
    const bool answer = ask(entry.path());
    if (isPackage_.size() < mostKept) {
        isPackage_.emplace(extension, answer);
    }
    return answer;
}

Outcome Walk::run(PlaceRef root) {
    Task task;
    queue.begin(task, std::move(root));
    work(0, std::move(task));
    for (std::thread& helper : helpers_) {
        helper.join();
    }
    if (failure_) {
        std::rethrow_exception(failure_);
    }
    return queue.outcome();
}

void Walk::work(unsigned number, Task task) noexcept {
    const ThreadPolicy policy;
    if (number != 0) {
        urgency_.adopt();
    }
    try {
        Worker(*this, number).run(std::move(task));
    } catch (...) {
        queue.end(Outcome::Stopped);
        const std::lock_guard lock(failureMutex_);
        if (!failure_) {
            failure_ = std::current_exception();
        }
    }
}

void Walk::addHelperIfUseful() {
    const auto number = static_cast<unsigned>(helpers_.size()) + 1;
    if (number >= mostWorkers_ || !queue.hasWaiting()) {
        return;
    }
    try {
        helpers_.emplace_back(&Walk::work, this, number, Task{});
    } catch (const std::system_error&) {
        mostWorkers_ = number; // no thread to be had: those that run do the work
    }
}

// Without a slash at the end, which would make the system follow a link.
std::string rootName(const std::filesystem::path& root) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(root, error);
    std::string name = error ? root.native() : absolute.native();
    name.erase(name.find_last_not_of('/') + 1);
    return name;
}

} // namespace

Action Visitor::directory(const Directory& /*directory*/, unsigned /*worker*/) {
    return Action::Continue;
}

unsigned workerCount(const Options& options) {
    static const unsigned processors = std::max(1U, std::thread::hardware_concurrency()); // each call reads a file
    return options.threads != 0 ? options.threads : processors;
}

Outcome walk(const std::filesystem::path& root, const Options& options, Visitor& visitor) {
    if (options.cancelled != nullptr && options.cancelled->load(std::memory_order_relaxed)) {
        return Outcome::Cancelled;
    }
    const ThreadPolicy policy;
    const std::string name = rootName(root);
    const int fd = root.empty() ? -1 : openDirectory(AT_FDCWD, name.empty() ? "/" : name.c_str());
    if (fd < 0) {
        return Outcome::Unreadable;
    }
    struct stat facts{};
    const auto mounts = MountPoints::below(name.empty() ? "/" : name);
    if (!mounts || ::fstat(fd, &facts) != 0) {
        ::close(fd);
        return Outcome::Unreadable;
    }
    PlaceRef place = Place::create(PlaceRef(), name, mounts->get());
    place->fd = fd; // closed with the place
    return Walk(options, visitor, facts.st_dev).run(std::move(place));
}

} // namespace vellmoor::walk
