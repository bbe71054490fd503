#pragma once

#include "LanguageManager.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace vellmoor {

/// The text lookup for QML. Views call it through L.qml, which ties the answer to the language.
class Texts final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Rises with every change of language.
    Q_PROPERTY(int revision READ revision NOTIFY revisionChanged FINAL)
    /// The raw value of the current language, "zh" or "en".
    Q_PROPERTY(QString language READ language NOTIFY revisionChanged FINAL)

public:
    explicit Texts(LanguageManager* languages, QObject* parent = nullptr);
    /// Takes the language manager that the window loader left on the engine.
    static Texts* create(QQmlEngine* engine, QJSEngine*);
    static void setLanguages(QQmlEngine& engine, LanguageManager& languages);

    [[nodiscard]] int revision() const { return revision_; }
    [[nodiscard]] QString language() const;
    Q_INVOKABLE [[nodiscard]] QString text(const QString& key) const;
    Q_INVOKABLE [[nodiscard]] QString text1(const QString& key, const QString& argument) const;
    /// The text of a number of things; `one` is that for exactly one.
    Q_INVOKABLE [[nodiscard]] QString countText(const QString& many, const QString& one, int count) const;
    /// With its digits grouped.
    Q_INVOKABLE [[nodiscard]] QString numberText(int number) const;
    /// Changes the language of the whole window to the other one.
    Q_INVOKABLE void switchLanguage();

Q_SIGNALS:
    void revisionChanged();

private:
    LanguageManager* languages_;
    int revision_ = 0;
};

} // namespace vellmoor
