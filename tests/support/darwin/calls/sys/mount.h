#pragma once
#include "DarwinAbi.h"

#define MNT_WAIT 1
#define MNT_NOWAIT 2
#define statfs darwin_statfs
#define getfsstat darwin_getfsstat
