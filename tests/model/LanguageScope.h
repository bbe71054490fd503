#pragma once

#include "texts/L.h"

namespace vellmoor {

/// Sets language and wordings for one test, and puts English Mac wordings back.
class LanguageScope {
public:
    explicit LanguageScope(AppLanguage language, TextSet set = TextSet::Mac) {
        L::setLanguage(language);
        L::setTextSet(set);
    }
    ~LanguageScope() {
        L::setLanguage(AppLanguage::english);
        L::setTextSet(TextSet::Mac);
    }
    LanguageScope(const LanguageScope&) = delete;
    LanguageScope& operator=(const LanguageScope&) = delete;
};

} // namespace vellmoor
