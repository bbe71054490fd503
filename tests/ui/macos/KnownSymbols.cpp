#include "KnownSymbols.h"

#include "AppKitWorkspace.h"
#include "MacDesktop.h"

namespace vellmoor {

QImage systemSymbol(const QString& name, int pixels) {
    AppKitWorkspace workspace;
    return imageOf(workspace.symbol(name.toStdString(), pixels));
}

bool isKnownSymbol(const std::string& symbol) {
    return !systemSymbol(QString::fromStdString(symbol), 16).isNull();
}

} // namespace vellmoor
