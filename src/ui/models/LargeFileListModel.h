#pragma once

#include "CleanupListModel.h"
#include "LargeFileFilters.h"

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

    void showAll() override;

Q_SIGNALS:
    void filtersChanged();
    void languageChanged();

protected:
    [[nodiscard]] std::vector<int> listedItems() const override;

private:
    LargeFileKindFilter kind_ = LargeFileKindFilter::all;
    LargeFileAgeFilter age_ = LargeFileAgeFilter::all;
};

} // namespace vellmoor
