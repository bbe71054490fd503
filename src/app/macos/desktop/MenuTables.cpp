#include "desktop/MenuTables.h"

#include "texts/L.h"

#include <array>

namespace vellmoor {

std::vector<StatusEntry> statusMenu() {
    return {{StatusAction::Open, L::tr("打开 Vellmoor")},
            {StatusAction::Separator, {}},
            {StatusAction::Quit, L::tr("退出")}};
}

bool opensStatusMenu(unsigned long eventType) {
    return eventType == rightMouseUp;
}

std::span<const BarEntry> editMenu() {
    static constexpr std::array entries{BarEntry{"Cut", "cut:", "x"}, BarEntry{"Copy", "copy:", "c"},
                                        BarEntry{"Paste", "paste:", "v"}, BarEntry{"Select All", "selectAll:", "a"}};
    return entries;
}

std::span<const BarEntry> windowMenu() {
    static constexpr std::array entries{BarEntry{"Minimize", "performMiniaturize:", "m"},
                                        BarEntry{"Close", "performClose:", "w"}};
    return entries;
}

} // namespace vellmoor
