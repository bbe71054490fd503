// The yardstick: what a walk cannot avoid and nothing else. Lists each directory with getdents64 and asks statx for
// each file, with threads that share a list of paths. It knows no rule: it crosses mounts, takes what d_type says,
// needs memory for each waiting path, fails on long paths, cannot be cancelled.
//   bare_walk FOLDER...
#include <condition_variable>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <mutex>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

std::mutex mutex;
std::condition_variable changed;
std::vector<std::string> waiting;
unsigned busy = 0;
long long bytes = 0, files = 0;

bool isDots(const char* name) {
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

void list(const std::string& path, std::vector<char>& buffer, long long& sum, long long& number) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ssize_t filled = 0;
    while ((filled = ::getdents64(fd, buffer.data(), buffer.size())) > 0) {
        for (ssize_t at = 0; at < filled;) {
            const auto* const entry = reinterpret_cast<const dirent64*>(buffer.data() + at);
            at += entry->d_reclen;
            if (entry->d_type == DT_DIR && !isDots(entry->d_name)) {
                const std::lock_guard lock(mutex);
                waiting.push_back(path + "/" + entry->d_name);
                changed.notify_one();
            } else if (entry->d_type == DT_REG) {
                struct statx facts{};
                ::statx(fd, entry->d_name, AT_SYMLINK_NOFOLLOW, STATX_BLOCKS | STATX_MTIME, &facts);
                sum += static_cast<long long>(facts.stx_blocks) * 512;
                ++number;
            }
        }
    }
    ::close(fd);
}

void work() {
    std::vector<char> buffer(64 * 1024);
    long long sum = 0, number = 0;
    std::unique_lock lock(mutex);
    for (;;) {
        changed.wait(lock, [] { return !waiting.empty() || busy == 0; });
        if (waiting.empty()) {
            break;
        }
        const std::string path = std::move(waiting.back());
        waiting.pop_back();
        ++busy;
        lock.unlock();
        list(path, buffer, sum, number);
        lock.lock();
        --busy;
    }
    changed.notify_all();
    bytes += sum;
    files += number;
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::fprintf(stderr, "bare_walk FOLDER...\n");
        return 2;
    }
    const unsigned threads = std::thread::hardware_concurrency();
    waiting.assign(arguments + 1, arguments + count);
    std::vector<std::thread> helpers;
    for (unsigned i = 1; i < threads; ++i) {
        helpers.emplace_back(work);
    }
    work();
    for (std::thread& helper : helpers) {
        helper.join();
    }
    std::printf("%lld %lld\n", bytes, files);
    return 0;
}
