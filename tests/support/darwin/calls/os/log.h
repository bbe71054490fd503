#pragma once
#include "DarwinAbi.h"

#define os_log_t darwin_log_t
#define os_log_create darwin_log_create
#define os_log_error darwin_log_error
