#include "LanguageManager.h"

#include <QSettings>
#include <QString>

namespace vellmoor {
namespace {

const QString settingKey = QStringLiteral("vmLanguage");

/// Chinese for any tag of Chinese ("zh-Hant-TW", "zh_CN.UTF-8"), English for everything else.
AppLanguage systemDefault(const std::optional<std::string>& preferred) {
    const QString tag = QString::fromStdString(preferred.value_or(std::string())).toLower();
    return tag.startsWith(QLatin1String("zh")) ? AppLanguage::chinese : AppLanguage::english;
}

AppLanguage startLanguage(const std::optional<std::string>& stored, const std::optional<std::string>& preferred) {
    const std::optional<AppLanguage> kept = stored ? appLanguage(*stored) : std::nullopt;
    return kept ? *kept : systemDefault(preferred);
}

} // namespace

LanguageSetting LanguageSetting::userDefaults() {
    return {
        .read = []() -> std::optional<std::string> {
            const QSettings settings;
            if (!settings.contains(settingKey)) {
                return std::nullopt;
            }
            return settings.value(settingKey).toString().toStdString();
        },
        .write =
            [](const std::string& rawValue) { QSettings().setValue(settingKey, QString::fromStdString(rawValue)); }};
}

LanguageManager::LanguageManager(LanguageSetting setting, const std::optional<std::string>& preferredLanguage,
                                 QObject* parent)
    : QObject(parent),
      setting_(std::move(setting)),
      language_(startLanguage(setting_.read(), preferredLanguage)) {
    L::setLanguage(language_);
}

void LanguageManager::setLanguage(AppLanguage language) {
    language_ = language;
    L::setLanguage(language);
    setting_.write(std::string(rawValue(language)));
    Q_EMIT languageChanged();
}

} // namespace vellmoor
