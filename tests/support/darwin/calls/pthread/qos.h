// As <sys/qos.h> has them there.
#pragma once
#include "DarwinAbi.h"

using qos_class_t = unsigned;
#define QOS_CLASS_USER_INTERACTIVE 0x21
#define QOS_CLASS_USER_INITIATED 0x19
#define QOS_CLASS_DEFAULT 0x15
#define QOS_CLASS_UTILITY 0x11
#define QOS_CLASS_BACKGROUND 0x09
#define QOS_CLASS_UNSPECIFIED 0x00
#define qos_class_self darwin_qos_class_self
#define pthread_set_qos_class_self_np darwin_pthread_set_qos_class_self_np
