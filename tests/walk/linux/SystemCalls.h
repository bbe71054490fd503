#pragma once

#include <set>
#include <string>

namespace vellmoor::walk::test {

/// While it lives, the walk's calls for a directory's entries and for the facts of a name pass through here: this
/// program's own getdents64() and fstatat() come before the C library's.
class SystemCalls {
public:
    SystemCalls();
    ~SystemCalls();
    SystemCalls(const SystemCalls&) = delete;
    SystemCalls& operator=(const SystemCalls&) = delete;

    /// As on file systems that do not tell types: every entry is DT_UNKNOWN.
    static void hideTypes();
    /// The names whose facts were asked for, each as often as it was.
    static std::multiset<std::string> names();
};

} // namespace vellmoor::walk::test
