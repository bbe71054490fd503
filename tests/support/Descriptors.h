#pragma once

#include <sys/resource.h>
#include <vector>

namespace vellmoor::test {

/// Lowers the number of descriptors that the process may open, as long as it lives.
class DescriptorLimit {
public:
    explicit DescriptorLimit(rlim_t most);
    ~DescriptorLimit();
    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;

private:
    rlimit before_{};
};

/// Takes descriptors until only `free` are left.
class AlmostNoDescriptors {
public:
    explicit AlmostNoDescriptors(unsigned free);
    ~AlmostNoDescriptors();
    AlmostNoDescriptors(const AlmostNoDescriptors&) = delete;
    AlmostNoDescriptors& operator=(const AlmostNoDescriptors&) = delete;

private:
    DescriptorLimit limit_;
    std::vector<int> taken_;
};

/// How many descriptors of the process are open.
unsigned openDescriptors();

} // namespace vellmoor::test
