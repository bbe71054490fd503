#include "KnownSymbols.h"

#include "appkit/AppKitWorkspace.h"
#include "desktop/MacDesktop.h"

namespace vellmoor {

QImage systemSymbol(const QString& name, int pixels) {
    AppKitWorkspace workspace;
    return imageOf(workspace.symbol(name.toStdString(), pixels));
}

bool isKnownSymbol(const std::string& symbol) {
    return !systemSymbol(QString::fromStdString(symbol), 16).isNull();
}

} // namespace vellmoor
