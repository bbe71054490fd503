#include "Application.h"

int main(int argc, char* argv[]) {
    return vellmoor::runApplication(argc, argv);
}
