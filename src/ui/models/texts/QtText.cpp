#include "QtText.h"

#include <QLocale>

#include <cmath>

namespace vellmoor {

QString groupedText(std::int64_t number) {
    return QLocale(QLocale::English).toString(number);
}

QString countText(std::string_view many, std::string_view one, std::int64_t count) {
    return count == 1 ? localised(one) : localised(many, groupedText(count).toStdString());
}

QString percentText(double fraction) {
    return QStringLiteral("%1%").arg(std::lround(fraction * 100));
}

} // namespace vellmoor
