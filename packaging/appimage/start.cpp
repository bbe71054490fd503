// The first part of Vellmoor's AppImage; the second is a squashfs image with AppRun in it. Debian has no program of the
// AppImage project for this, so this is one of its own. It needs neither FUSE nor anything else of the system: it
// unpacks the image into a folder of its own in the temporary folder, runs AppRun there and removes the folder when
// that has ended. Environment and options are those that AppImages have.
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <elf.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <ftw.h>
#include <memory>
#include <sqfs/compressor.h>
#include <sqfs/data_reader.h>
#include <sqfs/dir_reader.h>
#include <sqfs/error.h>
#include <sqfs/id_table.h>
#include <sqfs/inode.h>
#include <sqfs/io.h>
#include <sqfs/super.h>
#include <string>
#include <string_view>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int failureStatus = 127; // as a shell's for a program that cannot be started

/// What is unpacked until AppRun has ended; empty when nothing is to be removed.
std::string ownFolder;

void removeOwnFolder() {
    const auto removeOne = [](const char* path, const struct stat*, int, struct FTW*) { return ::remove(path); };
    constexpr int openFolders = 16;
    if (!ownFolder.empty()) {
        ::nftw(ownFolder.c_str(), removeOne, openFolders, FTW_DEPTH | FTW_PHYS);
    }
}

[[noreturn]] void fail(const std::string& what, int error = 0) {
    removeOwnFolder();
    std::fprintf(stderr, "Vellmoor.AppImage: %s%s%s\n", what.c_str(), error != 0 ? ": " : "",
                 error != 0 ? std::strerror(error) : "");
    std::exit(failureStatus);
}

/// This file from the end of the program on: libsquashfs sees the image alone.
struct Image {
    sqfs_file_t file{};
    int descriptor = -1;
    std::uint64_t start = 0;
    std::uint64_t size = 0;
};

Image& imageOf(const sqfs_file_t* file) {
    return *const_cast<Image*>(reinterpret_cast<const Image*>(file));
}

int readAt(sqfs_file_t* file, sqfs_u64 offset, void* buffer, std::size_t size) {
    const Image& image = imageOf(file);
    auto* out = static_cast<char*>(buffer);
    while (size > 0) {
        const ssize_t count = ::pread(image.descriptor, out, size, static_cast<off_t>(image.start + offset));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return count == 0 ? SQFS_ERROR_OUT_OF_BOUNDS : SQFS_ERROR_IO;
        }
        out += count;
        offset += static_cast<std::uint64_t>(count);
        size -= static_cast<std::size_t>(count);
    }
    return 0;
}

/// Where the program ends: its section headers are the last that a linker writes.
std::uint64_t programSize(int descriptor) {
    Elf64_Ehdr header{};
    if (::pread(descriptor, &header, sizeof header, 0) != static_cast<ssize_t>(sizeof header)) {
        fail("cannot read itself", errno);
    }
    return header.e_shoff + std::uint64_t{header.e_shnum} * header.e_shentsize;
}

void openImage(Image& image) {
    image.descriptor = ::open("/proc/self/exe", O_RDONLY | O_CLOEXEC);
    struct stat facts{};
    if (image.descriptor < 0 || ::fstat(image.descriptor, &facts) != 0) {
        fail("cannot open itself", errno);
    }
    image.start = programSize(image.descriptor);
    image.size = static_cast<std::uint64_t>(facts.st_size) - image.start;
    image.file.base.destroy = [](sqfs_object_t*) {};
    image.file.read_at = readAt;
    image.file.write_at = [](sqfs_file_t*, sqfs_u64, const void*, std::size_t) -> int { return SQFS_ERROR_IO; };
    image.file.get_size = [](const sqfs_file_t* file) -> sqfs_u64 { return imageOf(file).size; };
    image.file.truncate = [](sqfs_file_t*, sqfs_u64) -> int { return SQFS_ERROR_IO; };
}

void must(int error, const char* what) {
    if (error != 0) {
        fail(std::string("the image is damaged (") + what + ", " + std::to_string(error) + ")");
    }
}

/// Unpacks into a folder.
class Unpacker {
public:
    explicit Unpacker(Image& image) {
        must(sqfs_super_read(&super_, &image.file), "head");
        sqfs_compressor_config_t how{};
        must(sqfs_compressor_config_init(&how, static_cast<SQFS_COMPRESSOR>(super_.compression_id), super_.block_size,
                                         SQFS_COMP_FLAG_UNCOMPRESS),
             "compression");
        must(sqfs_compressor_create(&how, &compressor_), "compression");
        ids_ = sqfs_id_table_create(0);
        must(sqfs_id_table_read(ids_, &image.file, &super_, compressor_), "owners");
        folders_ = sqfs_dir_reader_create(&super_, compressor_, &image.file, 0);
        data_ = sqfs_data_reader_create(&image.file, super_.block_size, compressor_, 0);
        must(sqfs_data_reader_load_fragment_table(data_, &super_), "fragments");
        must(sqfs_dir_reader_get_full_hierarchy(folders_, ids_, nullptr, 0, &root_), "folders");
    }

    /// Only paths that match the shell pattern, when there is one.
    void unpack(const std::string& folder, const std::string& pattern, bool prints) {
        pattern_ = pattern;
        prints_ = prints;
        for (const sqfs_tree_node_t* node = root_->children; node != nullptr; node = node->next) {
            unpackNode(*node, folder, {});
        }
    }

private:
    void unpackNode(const sqfs_tree_node_t& node, const std::string& folder, const std::string& below) {
        const std::string name(reinterpret_cast<const char*>(node.name));
        if (name.empty() || name == ".." || name.find('/') != std::string::npos) {
            fail("the image is damaged (a name)");
        }
        const std::string path = folder + "/" + name;
        const std::string relative = below.empty() ? name : below + "/" + name;
        const mode_t mode = node.inode->base.mode;
        if (S_ISDIR(mode)) {
            if (!pattern_.empty() && node.children == nullptr) {
                return;
            }
            makeFolder(path);
            for (const sqfs_tree_node_t* child = node.children; child != nullptr; child = child->next) {
                unpackNode(*child, path, relative);
            }
            if (!pattern_.empty()) {
                ::rmdir(path.c_str()); // nothing below it matched
            }
            return;
        }
        if (!pattern_.empty() && ::fnmatch(pattern_.c_str(), relative.c_str(), 0) != 0) {
            return;
        }
        if (S_ISLNK(mode)) {
            const std::string target(reinterpret_cast<const char*>(node.inode->extra),
                                     node.inode->data.slink.target_size);
            ::unlink(path.c_str());
            if (::symlink(target.c_str(), path.c_str()) != 0) {
                fail(path, errno);
            }
        } else if (S_ISREG(mode)) {
            writeFile(*node.inode, path, mode);
        }
        if (prints_) {
            std::puts(path.c_str());
        }
    }

    static void makeFolder(const std::string& path) {
        if (::mkdir(path.c_str(), 0755) != 0 && errno != EEXIST) {
            fail(path, errno);
        }
    }

    void writeFile(const sqfs_inode_generic_t& inode, const std::string& path, mode_t mode) {
        sqfs_u64 size = 0;
        must(sqfs_inode_get_file_size(&inode, &size), "size");
        ::unlink(path.c_str());
        const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode & 0777);
        if (file < 0) {
            fail(path, errno);
        }
        for (sqfs_u64 done = 0; done < size;) {
            const auto wanted = static_cast<sqfs_u32>(std::min<sqfs_u64>(buffer_.size(), size - done));
            const sqfs_s32 count = sqfs_data_reader_read(data_, &inode, done, buffer_.data(), wanted);
            if (count <= 0) {
                fail("the image is damaged (" + path + ")");
            }
            writeAll(file, static_cast<std::size_t>(count), path);
            done += static_cast<sqfs_u64>(count);
        }
        if (::close(file) != 0) {
            fail(path, errno);
        }
    }

    void writeAll(int file, std::size_t size, const std::string& path) {
        const char* from = buffer_.data();
        while (size > 0) {
            const ssize_t count = ::write(file, from, size);
            if (count < 0 && errno != EINTR) {
                fail(path, errno);
            }
            from += std::max<ssize_t>(count, 0);
            size -= static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        }
    }

    sqfs_super_t super_{};
    sqfs_compressor_t* compressor_ = nullptr; // all of these last as long as the process
    sqfs_id_table_t* ids_ = nullptr;
    sqfs_dir_reader_t* folders_ = nullptr;
    sqfs_data_reader_t* data_ = nullptr;
    sqfs_tree_node_t* root_ = nullptr;
    std::vector<char> buffer_ = std::vector<char>(1U << 20U);
    std::string pattern_;
    bool prints_ = false;
};

/// A new folder in which programs may be run; the system may forbid that in its temporary folder.
std::string makeOwnFolder() {
    const auto variable = [](const char* name) {
        const char* value = std::getenv(name);
        return std::string(value != nullptr && *value == '/' ? value : "");
    };
    for (const std::string& place :
         {variable("TMPDIR"), std::string("/tmp"), std::string("/var/tmp"), variable("HOME")}) {
        std::string folder = place + "/.vellmoor-appimage-XXXXXX";
        if (place.empty() || ::mkdtemp(folder.data()) == nullptr) {
            continue;
        }
        const std::string probe = folder + "/probe";
        const int file = ::open(probe.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0700);
        const bool mayRun = file >= 0 && ::access(probe.c_str(), X_OK) == 0;
        if (file >= 0) {
            ::close(file);
            ::unlink(probe.c_str());
        }
        if (mayRun) {
            return folder;
        }
        ::rmdir(folder.c_str());
    }
    fail("no folder can be made to unpack into (TMPDIR, /tmp, /var/tmp)");
}

volatile std::sig_atomic_t child = 0;
volatile std::sig_atomic_t askedToEnd = 0;

void passOn(int signal) {
    askedToEnd = signal;
    if (child > 0) {
        ::kill(child, signal);
    }
}

void passSignalsOn() {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction action{};
        action.sa_handler = passOn;
        ::sigaction(signal, &action, nullptr);
    }
}

/// Runs it to its end; its status as a shell tells it. Whoever ends this process ends that one.
int run(const std::string& program, char* argv[]) {
    const pid_t parent = ::getpid();
    child = ::fork();
    if (child < 0) {
        fail("cannot start", errno);
    }
    if (child == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (::getppid() != parent) {
            std::_Exit(failureStatus); // it has gone already
        }
        ::execv(program.c_str(), argv);
        std::perror(program.c_str());
        std::_Exit(failureStatus);
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            fail("cannot wait", errno);
        }
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

std::string ownPath() {
    std::array<char, 4096> path{};
    const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size() - 1);
    return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : std::string();
}

int start(Image& image, char* argv[]) {
    std::array<char, 4096> place{};
    passSignalsOn();
    ownFolder = makeOwnFolder();
    Unpacker(image).unpack(ownFolder, {}, false);
    if (askedToEnd != 0) {
        removeOwnFolder();
        return 128 + askedToEnd;
    }
    ::setenv("APPIMAGE", ownPath().c_str(), 1);
    ::setenv("APPDIR", ownFolder.c_str(), 1);
    ::setenv("ARGV0", argv[0], 1);
    if (::getcwd(place.data(), place.size()) != nullptr) {
        ::setenv("OWD", place.data(), 1);
    }
    const int status = run(ownFolder + "/AppRun", argv);
    removeOwnFolder();
    return status;
}

void help() {
    std::puts("This AppImage unpacks itself into a temporary folder when it starts; it needs no FUSE.\n"
              "\n"
              "  --appimage-extract [PATTERN]   unpack into ./squashfs-root\n"
              "  --appimage-offset              print where the squashfs image begins\n"
              "  --appimage-version             print the version of this start\n"
              "  --appimage-help                print this\n"
              "\n"
              "Every other word goes to Vellmoor.");
}

} // namespace

int main(int argc, char* argv[]) {
    Image image;
    openImage(image);
    const std::string_view option = argc > 1 ? argv[1] : "";
    if (option == "--appimage-extract") {
        if (::mkdir("squashfs-root", 0755) != 0 && errno != EEXIST) {
            fail("squashfs-root", errno);
        }
        Unpacker(image).unpack("squashfs-root", argc > 2 ? argv[2] : "", true);
    } else if (option == "--appimage-offset") {
        std::printf("%llu\n", static_cast<unsigned long long>(image.start));
    } else if (option == "--appimage-version") {
        std::puts("Vellmoor's own start, " VELLMOOR_VERSION);
    } else if (option == "--appimage-help") {
        help();
    } else if (option == "--appimage-extract-and-run") {
        argv[1] = argv[0];
        return start(image, argv + 1);
    } else if (option.starts_with("--appimage-")) {
        fail("does not know " + std::string(option) + " (--appimage-help)");
    } else {
        return start(image, argv);
    }
    return EXIT_SUCCESS;
}
