// The system's log: what Vellmoor uses of it, with the compiler's check of formats. On a Mac the macro passes the
// arguments on packed; how is of no matter here.
#pragma once

typedef struct os_log_s* os_log_t;
extern "C" os_log_t os_log_create(const char* subsystem, const char* category);

static inline void os_log_checked(os_log_t log, const char* format, ...) __attribute__((format(os_log, 2, 3)));
static inline void os_log_checked(os_log_t, const char*, ...) {}
#define os_log_error(log, format, ...) os_log_checked(log, format __VA_OPT__(, ) __VA_ARGS__)
