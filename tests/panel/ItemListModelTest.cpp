#include "panel/ItemListModel.h"

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <gtest/gtest.h>
#include <random>

namespace quillary {

namespace {

std::shared_ptr<const LibraryItems> listOf(const std::vector<int>& names) {
    auto items = std::make_shared<LibraryItems>();
    for (const int name : names)
        items->emplace_back().url = std::filesystem::path("/shelf/" + std::to_string(name) + ".png");
    return items;
}

std::vector<int> shownBy(const ItemListModel& model) {
    std::vector<int> names;
    for (int row = 0; row < model.count(); ++row)
        names.push_back(std::stoi(std::string(model.item(row).url.nameStem())));
    return names;
}

} // namespace

/// Any list may follow any other: the model ends up equal to it, and the tester checks every step on the way.
TEST(ItemListModel, TakesOverAnyList) {
    std::mt19937 random(7);
    ItemListModel model({});
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (int round = 0; round < 300; ++round) {
        std::vector<int> names(random() % 40);
        std::ranges::generate(names, [n = 0]() mutable { return n++; });
        std::ranges::shuffle(names, random);
        names.resize(names.size() - random() % (names.size() + 1));
        model.show(listOf(names));
        ASSERT_EQ(shownBy(model), names);
    }
    std::vector<int> many(5000);
    std::ranges::generate(many, [n = 0]() mutable { return n++; });
    model.show(listOf(many));
    std::ranges::shuffle(many, random);
    model.show(listOf(many));
    EXPECT_EQ(shownBy(model), many);
}

TEST(ItemListModel, KeepsTheRowsThatStay) {
    ItemListModel model({});
    int resets = 0;
    QObject::connect(&model, &QAbstractItemModel::modelReset, [&] { ++resets; });
    const auto items = listOf({1, 2, 3, 4, 5, 6});
    model.show(items);
    const QPersistentModelIndex four = model.index(3);

    model.show(items, {1, 3, 5}); // a search on the same list
    EXPECT_EQ(shownBy(model), (std::vector{2, 4, 6}));
    EXPECT_EQ(four.row(), 1);
    model.show(listOf({9, 2, 8, 4, 6})); // a new listing
    EXPECT_EQ(four.row(), 3);
    EXPECT_EQ(resets, 0);
    EXPECT_NE(model.find(std::filesystem::path("/shelf/8.png")), nullptr);
    EXPECT_EQ(model.find(std::filesystem::path("/shelf/1.png")), nullptr);
}

TEST(ItemListModel, TellsWhichRowsChanged) {
    ItemListModel model({});
    model.show(listOf({1, 2, 3}));
    auto touched = std::make_shared<LibraryItems>(*listOf({1, 2, 3}));
    (*touched)[1].modified = FileDate(std::chrono::seconds(5));
    std::vector<int> rows;
    QObject::connect(&model, &QAbstractItemModel::dataChanged,
                     [&](const QModelIndex& from, const QModelIndex&) { rows.push_back(from.row()); });
    model.show(touched);
    EXPECT_EQ(rows, std::vector{1});
}

} // namespace quillary
