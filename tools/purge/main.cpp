// vellmoor-purge: the one thing that Vellmoor does with administrator rights. It takes no input of any kind.
#include "Purge.h"

#include <unistd.h>

int main(int argumentCount, char** /*arguments*/) {
    if (argumentCount > 1) {
        std::fputs("vellmoor-purge takes no arguments\n", stderr);
        return 1;
    }
    return vellmoor::dropFileCaches("/proc/sys/vm/drop_caches", stderr, [] { sync(); });
}
