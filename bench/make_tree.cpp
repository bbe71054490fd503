// Makes a tree of FOLDERS folders with FILES files in all, on two levels; every tenth file holds 5000 bytes.
//   make_tree NEWFOLDER FILES FOLDERS
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool makeFile(int folder, int number, const std::string& contents) {
    const std::string name = "file-" + std::to_string(number) + ".data";
    const int fd = ::openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (fd < 0) {
        return false;
    }
    const auto length = number % 10 == 0 ? contents.size() : 0;
    const bool isWritten = ::write(fd, contents.data(), length) == static_cast<ssize_t>(length);
    ::close(fd);
    return isWritten;
}

// Groups of up to 99 folders in a folder, which is itself one of the number.
std::string folderName(int number) {
    const std::string group = "/group-" + std::to_string(number / 100);
    return number % 100 == 0 ? group : group + "/folder-" + std::to_string(number % 100);
}

} // namespace

int main(int count, char** arguments) {
    if (count != 4) {
        std::fprintf(stderr, "make_tree NEWFOLDER FILES FOLDERS\n");
        return 2;
    }
    const std::string root = arguments[1];
    const int files = std::atoi(arguments[2]);
    const int folders = std::atoi(arguments[3]);
    const std::string contents(5000, 'x');
    bool isMade = ::mkdir(root.c_str(), 0755) == 0;
    for (int folder = 0; folder < folders && isMade; ++folder) {
        const std::string path = root + folderName(folder);
        isMade = ::mkdir(path.c_str(), 0755) == 0;
        const int fd = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        for (int file = folder; file < files && isMade; file += folders) {
            isMade = makeFile(fd, file / folders, contents);
        }
        ::close(fd);
    }
    if (!isMade) {
        std::perror(root.c_str());
    }
    return isMade ? 0 : 1;
}
