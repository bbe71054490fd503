#include "MacApplication.h"

int main(int argc, char* argv[]) {
    return vellmoor::runMacApplication(argc, argv);
}
