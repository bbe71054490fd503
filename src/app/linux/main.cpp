#include "Application.h"
#include "FolderVariables.h"

int main(int argc, char* argv[]) {
    vellmoor::unsetUnusableFolders();
    return vellmoor::runApplication(argc, argv);
}
