#pragma once
#include "DarwinAbi.h"

#include_next <unistd.h>

#define getattrlistbulk darwin_getattrlistbulk
#define getattrlist darwin_getattrlist
