#pragma once

#include "texts/L.h"

#include <QObject>

#include <functional>
#include <optional>
#include <string>

namespace vellmoor {

/// Where the language setting is kept: the user's settings in the program, a variable in tests.
struct LanguageSetting {
    std::function<std::optional<std::string>()> read;
    std::function<void(const std::string&)> write;

    /// QSettings, key "vmLanguage".
    static LanguageSetting userDefaults();
};

/// The interface language: chosen at start-up from the setting or the system, kept on every change.
class LanguageManager : public QObject {
    Q_OBJECT

public:
    LanguageManager(LanguageSetting setting, const std::optional<std::string>& preferredLanguage,
                    QObject* parent = nullptr);

    [[nodiscard]] AppLanguage language() const { return language_; }
    /// Also when it is the same: the lookup and the setting are written again.
    void setLanguage(AppLanguage language);

Q_SIGNALS:
    void languageChanged();

private:
    LanguageSetting setting_;
    AppLanguage language_;
};

} // namespace vellmoor
