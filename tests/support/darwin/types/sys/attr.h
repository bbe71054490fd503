// Darwin's names for getattrlistbulk(2), as <sys/attr.h> has them there.
#pragma once

#include <cstdint>

using attrgroup_t = std::uint32_t;
using fsobj_type_t = std::uint32_t;

struct attrlist {
    std::uint16_t bitmapcount;
    std::uint16_t reserved;
    attrgroup_t commonattr;
    attrgroup_t volattr;
    attrgroup_t dirattr;
    attrgroup_t fileattr;
    attrgroup_t forkattr;
};

struct attribute_set_t {
    attrgroup_t commonattr;
    attrgroup_t volattr;
    attrgroup_t dirattr;
    attrgroup_t fileattr;
    attrgroup_t forkattr;
};

struct attrreference_t {
    std::int32_t attr_dataoffset;
    std::uint32_t attr_length;
};

#define ATTR_BIT_MAP_COUNT 5
#define ATTR_CMN_NAME 0x00000001
#define ATTR_CMN_OBJTYPE 0x00000008
#define ATTR_CMN_MODTIME 0x00000400
#define ATTR_CMN_FNDRINFO 0x00004000
#define ATTR_CMN_FLAGS 0x00040000
#define ATTR_CMN_ERROR 0x20000000
#define ATTR_CMN_RETURNED_ATTRS 0x80000000
#define ATTR_DIR_MOUNTSTATUS 0x00000004
#define DIR_MNTSTATUS_MNTPOINT 0x00000001
#define DIR_MNTSTATUS_TRIGGER 0x00000002
#define ATTR_FILE_ALLOCSIZE 0x00000004
#define ATTR_FILE_DATAALLOCSIZE 0x00000400

#define FSOPT_NOFOLLOW 0x00000001
