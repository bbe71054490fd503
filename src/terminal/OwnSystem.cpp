#include "OwnSystem.h"

namespace vellmoor::terminal {

void chooseTexts(const Platform& platform, const SystemLayout& layout, std::optional<AppLanguage> language) {
    L::setTextSet(layout.texts);
    const bool isChinese = platform.preferredLanguage().value_or("").starts_with("zh");
    L::setLanguage(language.value_or(isChinese ? AppLanguage::chinese : AppLanguage::english));
}

} // namespace vellmoor::terminal
