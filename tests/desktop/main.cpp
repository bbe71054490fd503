// The program over a system of a test's own making: the folder that VELLMOOR_TEST_SYSTEM names stands for "/".
#include "start/Application.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char* argv[]) {
    const char* system = std::getenv("VELLMOOR_TEST_SYSTEM");
    if (system == nullptr) {
        std::fputs("VELLMOOR_TEST_SYSTEM names no folder\n", stderr);
        return EXIT_FAILURE;
    }
    return vellmoor::runApplication(argc, argv, system);
}
