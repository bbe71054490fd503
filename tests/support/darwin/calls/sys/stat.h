#pragma once
#include "DarwinAbi.h"

#include_next <sys/stat.h>

#define UF_HIDDEN 0x00008000
#define SF_DATALESS 0x40000000
#undef st_mtime
#define stat darwin_stat
#define lstat darwin_lstat
#define fstat darwin_fstat
#define fstatat darwin_fstatat
