#include "desktop/UserTime.h"

#include <QGuiApplication>
#include <QInputEvent>

#include <unistd.h>

namespace vellmoor {

UserTime::UserTime(QObject* parent) : QObject(parent) {
    qGuiApp->installEventFilter(this);
}

bool UserTime::eventFilter(QObject* watched, QEvent* event) {
    const bool isOfTheUser = event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress ||
                             event->type() == QEvent::MouseButtonRelease;
    if (isOfTheUser && event->spontaneous()) {
        milliseconds_ = static_cast<QInputEvent*>(event)->timestamp();
    }
    return QObject::eventFilter(watched, event);
}

// https://specifications.freedesktop.org/startup-notification-spec: the time stands at the end.
std::string UserTime::startupId() {
    if (QGuiApplication::platformName() != QLatin1String("xcb") || milliseconds_ == 0) {
        return {};
    }
    return "vellmoor-" + std::to_string(::getpid()) + "-" + std::to_string(given_++) + "_TIME" +
           std::to_string(milliseconds_);
}

} // namespace vellmoor
