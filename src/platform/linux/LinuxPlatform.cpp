#include "LinuxPlatform.h"
