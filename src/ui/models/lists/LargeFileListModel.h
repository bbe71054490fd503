#pragma once

#include "CleanupListModel.h"
#include "found/LargeFileFilters.h"

namespace vellmoor {

/// The large files that pass both filters. (The base's full name is what Qt's type registration looks up.)
class LargeFileListModel final : public vellmoor::CleanupListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window model")
    /// Position in kindTitles.
    Q_PROPERTY(int kind READ kind WRITE setKind NOTIFY filtersChanged FINAL)
    /// Position in ageTitles.
    Q_PROPERTY(int age READ age WRITE setAge NOTIFY filtersChanged FINAL)
    /// With the files that are not listed yet.
    Q_PROPERTY(int resultCount READ resultCount NOTIFY summaryChanged FINAL)
    /// What is not listed yet, such as "and 4,989 more, 2.1 TB"; empty when everything is.
    Q_PROPERTY(QString moreText READ moreText NOTIFY summaryChanged FINAL)
    Q_PROPERTY(QStringList kindTitles READ kindTitles NOTIFY languageChanged FINAL)
    Q_PROPERTY(QStringList ageTitles READ ageTitles NOTIFY languageChanged FINAL)

public:
    LargeFileListModel(CleanerStore& store, Desktop& desktop, QObject* parent = nullptr);

    [[nodiscard]] int kind() const { return static_cast<int>(kind_); }
    void setKind(int kind);
    [[nodiscard]] int age() const { return static_cast<int>(age_); }
    void setAge(int age);
    [[nodiscard]] QStringList kindTitles() const;
    [[nodiscard]] QStringList ageTitles() const;

    [[nodiscard]] int resultCount() const;
    [[nodiscard]] QString moreText() const;
    /// Lists every large file, and goes on doing so after a scan.
    Q_INVOKABLE void listAll();

    [[nodiscard]] QString choiceText() const override;
    void recallChoice(CleanerModule module, const QString& text) override;
    void showAll() override;
    void setAllSelected(bool selected) override;

Q_SIGNALS:
    void filtersChanged();
    void languageChanged();

protected:
    [[nodiscard]] std::vector<int> listedItems() const override;

private:
    void listAllWhenWanted();

    bool wantsAll_ = false;
    LargeFileKindFilter kind_ = LargeFileKindFilter::all;
    LargeFileAgeFilter age_ = LargeFileAgeFilter::all;
};

} // namespace vellmoor
