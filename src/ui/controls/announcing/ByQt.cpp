// Qt 6.8 and later tell readers themselves what is to be read out.
#include "Spoken.h"

#include <QAccessibleAnnouncementEvent>

namespace vellmoor {

bool Spoken::announce(const QString& text, bool urgent) const {
    if (QAccessible::isActive()) {
        QAccessibleAnnouncementEvent event(parent(), text);
        event.setPoliteness(urgent ? QAccessible::AnnouncementPoliteness::Assertive
                                   : QAccessible::AnnouncementPoliteness::Polite);
        QAccessible::updateAccessibility(&event);
    }
    return true;
}

} // namespace vellmoor
