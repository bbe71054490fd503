#include "disk/FolderVariables.h"
#include "start/Application.h"

int main(int argc, char* argv[]) {
    vellmoor::unsetUnusableFolders();
    return vellmoor::runApplication(argc, argv);
}
