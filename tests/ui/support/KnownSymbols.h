#pragma once

#include <QImage>
#include <QString>

#include <string>

namespace vellmoor {

/// The system's own picture of a symbol, as Desktop::symbol has it; null on Linux, where the embedded ones are drawn.
QImage systemSymbol(const QString& name, int pixels);

/// Whether there is a picture of that name, the system's or an embedded one.
bool isKnownSymbol(const std::string& symbol);

} // namespace vellmoor
