#pragma once

#include <QAccessible>
#include <QObject>
#include <QtQml/qqml.h>

class QQuickItem;

namespace vellmoor {

/// What a screen reader is told of an item beyond what Qt Quick passes on by itself: how it is ticked, whether it is
/// unfolded, how far it has come. `install` makes readers ask for it; it also tells them what is disabled.
class Spoken final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("attached to items")
    QML_ATTACHED(vellmoor::Spoken)
    /// A Qt::CheckState; -1: it cannot be ticked.
    Q_PROPERTY(int tick READ tick WRITE setTick NOTIFY changed FINAL)
    Q_PROPERTY(bool expandable READ expandable WRITE setExpandable NOTIFY changed FINAL)
    Q_PROPERTY(bool expanded READ expanded WRITE setExpanded NOTIFY changed FINAL)
    /// From 0 to 1; below: it has none.
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY changed FINAL)

public:
    explicit Spoken(QObject* item);
    static Spoken* qmlAttachedProperties(QObject* item) { return new Spoken(item); }
    /// Null when nothing was attached.
    static Spoken* of(const QObject& item);
    /// Once for the program, before the first view; further calls do nothing.
    static void install();

    [[nodiscard]] int tick() const { return tick_; }
    void setTick(int tick);
    [[nodiscard]] bool expandable() const { return expandable_; }
    void setExpandable(bool expandable);
    [[nodiscard]] bool expanded() const { return expanded_; }
    void setExpanded(bool expanded);
    [[nodiscard]] double value() const { return value_; }
    void setValue(double value);
    /// Says that the keyboard is on the item, though another one has it: the row of an opened list.
    Q_INVOKABLE void tellFocus();
    /// Has a text read out, an urgent one before everything else; false where Qt knows no such thing.
    Q_INVOKABLE [[nodiscard]] bool announce(const QString& text, bool urgent) const;
    void addTo(QAccessible::State& state) const;

Q_SIGNALS:
    void changed();

private:
    void tellState(QAccessible::State changed);

    int tick_ = -1;
    bool expandable_ = false;
    bool expanded_ = false;
    double value_ = -1;
};

} // namespace vellmoor
