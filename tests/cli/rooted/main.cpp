// vellmoor-cli with the first word as the folder that stands for "/".
#include "call/CommandLine.h"

int main(int count, char** words) {
    return count < 2 ? 2 : vellmoor::cli::runCommandLine({words + 2, words + count}, words[1]);
}
