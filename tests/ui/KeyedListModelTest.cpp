// Rows with identities: what their views are told.
#include "KeyedListModel.h"

#include "RecordingDesktop.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;

class Letters final : public KeyedListModel {
public:
    explicit Letters(Desktop& desktop) : KeyedListModel(desktop) {}
    void show(const std::string& letters) {
        std::vector<KeyedRow> fresh;
        for (const char letter : letters) {
            fresh.push_back(named(std::string(1, letter), static_cast<int>(fresh.size())));
        }
        setRows(fresh);
    }
    void show(const std::vector<KeyedRow>& fresh) { setRows(fresh); }
    KeyedRow named(const std::string& name, int record) {
        names_[name] = name;
        return {.key = name, .record = record};
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        const KeyedRow* row = rowAt(index.row());
        return row != nullptr && role == Qt::DisplayRole ? QString::fromStdString(names_.at(row->key)) : QVariant();
    }
    [[nodiscard]] std::string shown() const {
        std::string all;
        for (const KeyedRow& row : rows()) {
            all += names_.at(row.key);
        }
        return all;
    }

protected:
    [[nodiscard]] int nameRole() const override { return Qt::DisplayRole; }

private:
    std::map<RowKey, std::string> names_;
};

class KeyedListModelTest : public ::testing::Test {
protected:
    /// Filled before anything listens to it.
    static std::unique_ptr<Letters> filled(Desktop& desktop) {
        auto made = std::make_unique<Letters>(desktop);
        made->show("abcdef");
        return made;
    }

    RecordingDesktop desktop;
    std::unique_ptr<Letters> owner = filled(desktop);
    Letters& letters = *owner;
    QAbstractItemModelTester tester{&letters, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy resets{&letters, &QAbstractItemModel::modelReset};
    QSignalSpy removals{&letters, &QAbstractItemModel::rowsRemoved};
    QSignalSpy insertions{&letters, &QAbstractItemModel::rowsInserted};
    QSignalSpy moves{&letters, &QAbstractItemModel::rowsMoved};
};

TEST_F(KeyedListModelTest, TheSameRowsAgainAreNoChangeOfStructure) {
    letters.show("abcdef");
    EXPECT_EQ(removals.size() + insertions.size() + moves.size() + resets.size(), 0);
}

TEST_F(KeyedListModelTest, OneRowThatWentIsOneRemoval) {
    const QPersistentModelIndex last(letters.index(5));
    letters.show("abdef");
    EXPECT_EQ(letters.shown(), "abdef");
    EXPECT_EQ(removals.size(), 1);
    EXPECT_EQ(insertions.size() + moves.size() + resets.size(), 0);
    EXPECT_EQ(last.row(), 4) << "a view keeps its place by this";
}

TEST_F(KeyedListModelTest, NeighboursThatCameAreOneInsertion) {
    letters.show("abxyzcdef");
    EXPECT_EQ(letters.shown(), "abxyzcdef");
    EXPECT_EQ(insertions.size(), 1);
    EXPECT_EQ(removals.size() + moves.size(), 0);
}

TEST_F(KeyedListModelTest, ARowThatMovedKeepsItsIdentity) {
    const QPersistentModelIndex moved(letters.index(4));
    letters.show("eabcdf");
    EXPECT_EQ(letters.shown(), "eabcdf");
    EXPECT_EQ(moved.row(), 0);
    EXPECT_EQ(removals.size() + insertions.size(), 0);
}

TEST_F(KeyedListModelTest, EverythingAtOnceEndsInTheRightOrder) {
    for (const char* wanted : {"ace", "fxbaz", "", "zyx", "xyz", "abcdef", "fedcba", "afbecd", "bd"}) {
        letters.show(wanted);
        EXPECT_EQ(letters.shown(), wanted);
    }
    EXPECT_EQ(resets.size(), 0);
}

TEST_F(KeyedListModelTest, AThousandRowsAreSortedAsAWhole) {
    std::vector<KeyedRow> rows;
    for (int number = 0; number < 1000; ++number) {
        rows.push_back(letters.named(std::to_string(number), number));
    }
    letters.show(rows);
    std::ranges::reverse(rows);
    letters.show(rows);
    EXPECT_EQ(letters.data(letters.index(0), Qt::DisplayRole).toString(), QStringLiteral("999"));
    EXPECT_EQ(moves.size(), 0);
    EXPECT_EQ(resets.size(), 0);
}

} // namespace
} // namespace vellmoor
