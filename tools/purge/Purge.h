#pragma once

#include <cstdio>
#include <functional>

namespace vellmoor {

/// What is printed for a failure: "Operation not permitted" where the right is missing, else the system's text.
const char* purgeErrorText(int error);

/// Writes everything to the disks and then asks the kernel, through the file `switchPath`, to drop its clean file
/// caches and reclaimable slab (kernel: admin-guide/sysctl/vm, "drop_caches"). The file is opened first, so nothing
/// happens without the right to do so. `writeDisks` is sync(2). Answers 0, or 1 with a line in `errors`.
int dropFileCaches(const char* switchPath, std::FILE* errors, const std::function<void()>& writeDisks);

} // namespace vellmoor
