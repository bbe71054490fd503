// Qt 6.8 and later tell readers themselves what is to be read out.
#include "Spoken.h"

#include <QAccessibleAnnouncementEvent>
#include <QQuickItem>
#include <QQuickWindow>

namespace vellmoor {

bool Spoken::announce(const QString& text, bool urgent) const {
    const auto* item = qobject_cast<const QQuickItem*>(parent());
    if (QAccessible::isActive() && item != nullptr && item->window() != nullptr) {
        // From the window: what no reader knows as an object, as an item that shows nothing, is not heard.
        QAccessibleAnnouncementEvent event(item->window(), text);
        event.setPoliteness(urgent ? QAccessible::AnnouncementPoliteness::Assertive
                                   : QAccessible::AnnouncementPoliteness::Polite);
        QAccessible::updateAccessibility(&event);
    }
    return true;
}

} // namespace vellmoor
