#include "KnownSymbols.h"

#include "SymbolImageProvider.h"

namespace vellmoor {

QImage systemSymbol(const QString& /*name*/, int /*pixels*/) {
    return {};
}

bool isKnownSymbol(const std::string& symbol) {
    return hasSymbol(QString::fromStdString(symbol));
}

} // namespace vellmoor
