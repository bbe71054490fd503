#pragma once

#include <QAccessible>

class QQmlEngine;

namespace vellmoor {

/// Has Qt Quick's types registered before a screen reader's first question. At that Qt looks, once in a process, for
/// what holds accessible names; when no view has imported Qt Quick by then, nothing ever has a name or tells its focus.
/// Who has no reader waits for nothing. The engine must outlive it.
class AccessibleTypes final : public QAccessible::ActivationObserver {
public:
    /// Before the window is shown.
    explicit AccessibleTypes(QQmlEngine& engine);
    AccessibleTypes(const AccessibleTypes&) = delete;
    AccessibleTypes& operator=(const AccessibleTypes&) = delete;
    ~AccessibleTypes() override;

private:
    void accessibilityActiveChanged(bool active) override;

    QQmlEngine& engine_;
};

} // namespace vellmoor
