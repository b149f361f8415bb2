#include "panel/RowListModel.h"

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>
#include <map>
#include <numeric>
#include <random>

namespace quillary {
namespace {

struct Row {
    int thing;
    int state;
    bool operator==(const Row&) const = default;
};
using Rows = std::vector<Row>;

class Numbers : public RowListModel {
public:
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole ? QVariant(rows[static_cast<std::size_t>(index.row())].thing) : QVariant();
    }
    void show(const Rows& now) {
        takeOver(rows, now, [](const Row& a, const Row& b) { return a.thing == b.thing; });
    }
    Rows rows;
};

TEST(RowListModelTest, KeepsWhatIsInBothListsWhereItGoes) {
    std::mt19937 random(5);
    Numbers model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (int round = 0; round < 400; ++round) {
        std::vector<int> things(12);
        std::iota(things.begin(), things.end(), 0);
        if (round % 3 > 0) std::ranges::shuffle(things, random);
        Rows now;
        for (const int thing : things)
            if (random() % 4 > 0) now.push_back({thing, static_cast<int>(random() % 3)});
        if (round % 7 == 0) now.push_back({3, 9}); // once more

        std::map<int, QPersistentModelIndex> places;
        for (int row = 0; row < model.rowCount(); ++row)
            places.try_emplace(model.rows[static_cast<std::size_t>(row)].thing, model.index(row));
        const Rows before = model.rows;
        int changes = 0;
        const auto counting = QObject::connect(&model, &QAbstractItemModel::dataChanged, [&] { ++changes; });
        model.show(now);
        QObject::disconnect(counting);
        ASSERT_EQ(model.rows, now) << round;
        for (const Row& row : now)
            if (const auto place = places.find(row.thing); place != places.end()) {
                EXPECT_EQ(place->second.data(), row.thing) << round;
            }
        EXPECT_TRUE(before != now || changes == 0);
    }
}

} // namespace
} // namespace quillary
