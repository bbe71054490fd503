#pragma once

#include "Platform.h"

#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <unordered_map>

namespace vellmoor::mac {

/// Which extensions make a folder a package. Asking the system takes as long as listing a folder and its answer is the
/// same for each folder of an extension, so it is remembered: for a few seconds, about one walk, since a newly
/// installed application may bring new types. For any thread.
class PackageTypes {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// `ask` answers for one folder. It may be called on several threads at once.
    explicit PackageTypes(
        std::function<bool(const Path&)> ask,
        std::function<Time()> now = [] { return std::chrono::steady_clock::now(); });

    /// False for a folder without extension.
    [[nodiscard]] bool contain(const Path& folder);

private:
    [[nodiscard]] std::optional<bool> remembered(const std::string& extension);
    void remember(const std::string& extension, bool isPackage);

    std::function<bool(const Path&)> ask_;
    std::function<Time()> now_;
    std::mutex lock_;
    std::unordered_map<std::string, bool> known_;
    Time since_; ///< when the first of them was learnt
};

} // namespace vellmoor::mac
