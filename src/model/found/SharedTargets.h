#pragma once

#include "found/CleanupTarget.h"

#include <atomic>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

namespace vellmoor {

/// The targets of a row. A copy shares them until one of the two is edited: a Smart Scan's rows stand in its own list
/// and in their module's, with tens of thousands of paths each.
class SharedTargets {
public:
    using value_type = CleanupTarget;
    using const_iterator = std::vector<CleanupTarget>::const_iterator;

    SharedTargets() = default;
    SharedTargets(std::vector<CleanupTarget> targets)
        : held_(std::make_shared<std::vector<CleanupTarget>>(std::move(targets))) {}
    SharedTargets(std::initializer_list<CleanupTarget> targets) : SharedTargets(std::vector<CleanupTarget>(targets)) {}

    operator const std::vector<CleanupTarget>&() const { return all(); }
    [[nodiscard]] const_iterator begin() const { return all().begin(); }
    [[nodiscard]] const_iterator end() const { return all().end(); }
    [[nodiscard]] std::size_t size() const { return all().size(); }
    [[nodiscard]] bool empty() const { return all().empty(); }
    [[nodiscard]] const CleanupTarget& front() const { return all().front(); }
    [[nodiscard]] const CleanupTarget& back() const { return all().back(); }
    [[nodiscard]] const CleanupTarget& at(std::size_t index) const { return all().at(index); }
    [[nodiscard]] const CleanupTarget& operator[](std::size_t index) const { return all()[index]; }

    /// This row's own ones, to be changed. What was got from it before does not hold any more.
    [[nodiscard]] std::vector<CleanupTarget>& edit() {
        if (held_ && held_.use_count() == 1) {
            std::atomic_thread_fence(std::memory_order_acquire); // after what another thread read before it let go
        } else {
            held_ = std::make_shared<std::vector<CleanupTarget>>(all());
        }
        return *held_;
    }
    /// Whether both are one: neither was edited since the copy.
    [[nodiscard]] bool isSharedWith(const SharedTargets& other) const { return held_ && held_ == other.held_; }

private:
    [[nodiscard]] const std::vector<CleanupTarget>& all() const {
        static const std::vector<CleanupTarget> none;
        return held_ ? *held_ : none;
    }

    std::shared_ptr<std::vector<CleanupTarget>> held_;
};

} // namespace vellmoor
