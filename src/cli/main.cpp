// vellmoor-cli. What it can do stands in HelpPage.cpp.
#include "call/CommandLine.h"

int main(int count, char** words) {
    return vellmoor::cli::runCommandLine({words + 1, words + count});
}
