#pragma once

#include "CancelToken.h"
#include "Platform.h"
#include "layouts/SystemLayout.h"

#include <any>
#include <map>
#include <typeindex>

namespace vellmoor {

/// What one call into the engine works with: the system, its layout, the moment that counts as now, and the flag by
/// which the caller ends it. It is used from one thread, and what was found out during the call is remembered in it.
class EngineContext {
public:
    EngineContext(const Platform& platform, const SystemLayout& layout, const CancelToken& token, TimePoint now)
        : platform_(platform),
          layout_(layout),
          token_(&token),
          now_(now) {}
    /// For a call that nobody can end.
    EngineContext(const Platform& platform, const SystemLayout& layout, TimePoint now)
        : EngineContext(platform, layout, never(), now) {}

    [[nodiscard]] const Platform& platform() const { return platform_; }
    [[nodiscard]] const SystemLayout& layout() const { return layout_; }
    [[nodiscard]] const CancelToken& token() const { return *token_; }
    [[nodiscard]] TimePoint now() const { return now_; }

    [[nodiscard]] bool isCancelled() const { return token_->isCancelled(); }
    void throwIfCancelled() const {
        if (isCancelled()) {
            throw ScanCancelled();
        }
    }

    /// The call's one `Known`, made when it is first asked for. Each room keeps what it has found out in a type of its
    /// own, which only it names.
    template <class Known>
    Known& remembered() {
        std::any& slot = remembered_[typeid(Known)];
        if (!slot.has_value()) {
            slot.emplace<Known>();
        }
        return *std::any_cast<Known>(&slot);
    }

private:
    static const CancelToken& never();

    const Platform& platform_;
    const SystemLayout& layout_;
    const CancelToken* token_;
    TimePoint now_;
    std::map<std::type_index, std::any> remembered_;
};

} // namespace vellmoor
