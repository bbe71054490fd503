#include "shown/ShownWork.h"

#include "shown/Output.h"
#include "shown/ProgressLine.h"
#include "texts/ByteCount.h"
#include "texts/L.h"

namespace vellmoor::cli {

CleanProgressCallback showingOn(ProgressLine& line, const std::string& what) {
    return [&line, what](const CleanProgress& progress) {
        const double whole = progress.totalCount > 0 ? static_cast<double>(progress.totalCount) : 1;
        line.show(static_cast<double>(progress.doneCount) / whole, what,
                  std::to_string(progress.doneCount) + "/" + std::to_string(progress.totalCount) + "  " +
                      byteCountText(progress.doneBytes) + "  " + shown(progress.current));
    };
}

} // namespace vellmoor::cli
