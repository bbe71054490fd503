#pragma once
#include "DarwinAbi.h"

#include_next <sys/resource.h>

#define IOPOL_TYPE_DISK 0
#define IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES 3
#define IOPOL_SCOPE_PROCESS 0
#define IOPOL_SCOPE_THREAD 1
#define IOPOL_MATERIALIZE_DATALESS_FILES_DEFAULT 0
#define IOPOL_MATERIALIZE_DATALESS_FILES_OFF 1
#define getiopolicy_np darwin_getiopolicy_np
#define setiopolicy_np darwin_setiopolicy_np
