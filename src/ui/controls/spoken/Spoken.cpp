#include "Spoken.h"

#include "SpokenItem.h"

#include <QQuickItem>

namespace vellmoor {

Spoken::Spoken(QObject* item) : QObject(item) {
    if (auto* quickItem = qobject_cast<QQuickItem*>(item)) {
        connect(quickItem, &QQuickItem::enabledChanged, this, [this] {
            QAccessible::State state;
            state.disabled = true;
            tellState(state);
        });
    }
}

Spoken* Spoken::of(const QObject& item) {
    // Qt asks for the item without const, since it might attach something.
    return qobject_cast<Spoken*>(qmlAttachedPropertiesObject<Spoken>(const_cast<QObject*>(&item), false)); // NOLINT
}

void Spoken::install() {
    static const bool once = [] {
        QAccessible::installFactory(&spokenItem);
        return true;
    }();
    Q_UNUSED(once);
}

void Spoken::setTick(int tick) {
    if (tick != tick_) {
        tick_ = tick;
        QAccessible::State state;
        state.checked = true;
        tellState(state);
    }
}

void Spoken::setExpandable(bool expandable) {
    if (expandable != expandable_) {
        expandable_ = expandable;
        QAccessible::State state;
        state.expandable = true;
        tellState(state);
    }
}

void Spoken::setExpanded(bool expanded) {
    if (expanded != expanded_) {
        expanded_ = expanded;
        QAccessible::State state;
        state.expanded = true;
        tellState(state);
    }
}

void Spoken::setValue(double value) {
    if (value != value_) {
        value_ = value;
        if (QAccessible::isActive()) {
            QAccessibleValueChangeEvent event(parent(), value);
            QAccessible::updateAccessibility(&event);
        }
        Q_EMIT changed();
    }
}

void Spoken::tellState(QAccessible::State changedStates) {
    if (QAccessible::isActive()) {
        QAccessibleStateChangeEvent event(parent(), changedStates);
        QAccessible::updateAccessibility(&event);
    }
    Q_EMIT changed();
}

void Spoken::tellFocus() {
    if (QAccessible::isActive()) {
        QAccessibleEvent event(parent(), QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

void Spoken::addTo(QAccessible::State& state) const {
    if (tick_ >= 0) {
        state.checkable = true;
        state.checked = tick_ == Qt::Checked;
        state.checkStateMixed = tick_ == Qt::PartiallyChecked;
    }
    if (expandable_) {
        state.expandable = true;
        state.expanded = expanded_;
        state.collapsed = !expanded_;
    }
}

} // namespace vellmoor
