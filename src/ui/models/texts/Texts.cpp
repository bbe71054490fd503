#include "Texts.h"

#include "QtText.h"

#include <QQmlEngine>
#include <QVariant>

namespace vellmoor {
namespace {

constexpr auto languagesProperty = "vellmoorLanguages";

} // namespace

Texts::Texts(LanguageManager* languages, QObject* parent) : QObject(parent), languages_(languages) {
    if (languages_ != nullptr) {
        connect(languages_, &LanguageManager::languageChanged, this, [this] {
            ++revision_;
            Q_EMIT revisionChanged();
        });
    }
}

Texts* Texts::create(QQmlEngine* engine, QJSEngine*) {
    auto* languages = qobject_cast<LanguageManager*>(engine->property(languagesProperty).value<QObject*>());
    return new Texts(languages);
}

void Texts::setLanguages(QQmlEngine& engine, LanguageManager& languages) {
    engine.setProperty(languagesProperty, QVariant::fromValue<QObject*>(&languages));
}

QString Texts::language() const {
    const std::string_view raw = rawValue(L::language());
    return QString::fromUtf8(raw.data(), static_cast<qsizetype>(raw.size()));
}

QString Texts::text(const QString& key) const {
    return QString::fromStdString(L::tr(key.toStdString()));
}

QString Texts::text1(const QString& key, const QString& argument) const {
    return QString::fromStdString(L::tr(key.toStdString(), argument.toStdString()));
}

QString Texts::countText(const QString& many, const QString& one, int count) const {
    return vellmoor::countText(many.toStdString(), one.toStdString(), count);
}

QString Texts::numberText(int number) const {
    return groupedText(number);
}

void Texts::switchLanguage() {
    if (languages_ != nullptr) {
        languages_->setLanguage(languages_->language() == AppLanguage::english ? AppLanguage::chinese
                                                                               : AppLanguage::english);
    }
}

} // namespace vellmoor
