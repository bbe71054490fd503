// Qt 6.4 gives Quick items neither a disabled nor an expanded state, and its progress bars no value. What stands here
// passes every question on to Qt's own interface and adds those answers.
#include "SpokenItem.h"

#include "Spoken.h"

#include <QPointer>
#include <QQuickItem>

#include <utility>

namespace vellmoor {
namespace {

class SpokenItem final : public QAccessibleInterface, public QAccessibleValueInterface {
public:
    explicit SpokenItem(QAccessibleInterface& inner)
        : inner_(&inner),
          innerId_(QAccessible::uniqueId(&inner)),
          object_(inner.object()) {}
    SpokenItem(const SpokenItem&) = delete;
    SpokenItem& operator=(const SpokenItem&) = delete;

    [[nodiscard]] bool isValid() const override { return object_ != nullptr && inner_->isValid(); }
    /// Not the inner one's answer: at the end of the program Qt asks when that is already deleted.
    [[nodiscard]] QObject* object() const override { return object_; }
    [[nodiscard]] QWindow* window() const override { return inner_->window(); }
    [[nodiscard]] QList<std::pair<QAccessibleInterface*, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override {
        return inner_->relations(match);
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override { return inner_->focusChild(); }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override { return inner_->childAt(x, y); }
    [[nodiscard]] QAccessibleInterface* parent() const override { return inner_->parent(); }
    [[nodiscard]] QAccessibleInterface* child(int index) const override { return inner_->child(index); }
    [[nodiscard]] int childCount() const override { return inner_->childCount(); }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        return inner_->indexOfChild(child);
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override { return inner_->text(kind); }
    void setText(QAccessible::Text kind, const QString& text) override { inner_->setText(kind, text); }
    [[nodiscard]] QRect rect() const override { return inner_->rect(); }
    [[nodiscard]] QAccessible::Role role() const override { return inner_->role(); }
    [[nodiscard]] QColor foregroundColor() const override { return inner_->foregroundColor(); }
    [[nodiscard]] QColor backgroundColor() const override { return inner_->backgroundColor(); }
    void virtual_hook(int id, void* data) override { inner_->virtual_hook(id, data); }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = inner_->state();
        const auto* item = qobject_cast<const QQuickItem*>(object());
        if (item != nullptr && !item->isEnabled()) {
            state.disabled = true;
            state.focusable = false;
        }
        if (const Spoken* spoken = this->spoken()) {
            spoken->addTo(state);
        }
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface && spoken() != nullptr && spoken()->value() >= 0) {
            return static_cast<QAccessibleValueInterface*>(this);
        }
        return inner_->interface_cast(type);
    }
    [[nodiscard]] QVariant currentValue() const override { return spoken() == nullptr ? 0 : spoken()->value(); }
    void setCurrentValue(const QVariant& /*value*/) override {} // what is shown cannot be set
    [[nodiscard]] QVariant maximumValue() const override { return 1.0; }
    [[nodiscard]] QVariant minimumValue() const override { return 0.0; }
    [[nodiscard]] QVariant minimumStepSize() const override { return 0.0; }

protected:
    /// Qt forgets Qt Quick's interface together with this one, and would never delete it.
    ~SpokenItem() override {
        if (QAccessible::accessibleInterface(innerId_) == inner_) {
            QAccessible::deleteAccessibleInterface(innerId_);
        }
    }

private:
    [[nodiscard]] const Spoken* spoken() const {
        const QObject* item = object();
        return item == nullptr ? nullptr : Spoken::of(*item);
    }

    QAccessibleInterface* inner_;
    QAccessible::Id innerId_;
    QPointer<QObject> object_;
};

} // namespace

QAccessibleInterface* spokenItem(const QString& className, QObject* object) {
    static QObject* asked = nullptr; // Qt Quick's own factory is being asked about it
    // Qt asks for every class that the object is of, the own one first.
    if (object == asked || qobject_cast<QQuickItem*>(object) == nullptr ||
        className != QLatin1String(object->metaObject()->className())) {
        return nullptr;
    }
    QObject* before = std::exchange(asked, object);
    QAccessibleInterface* inner = QAccessible::queryAccessibleInterface(object);
    asked = before;
    return inner == nullptr ? nullptr : new SpokenItem(*inner);
}

} // namespace vellmoor
