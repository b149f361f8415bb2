#include "panel/ShelfSelection.h"
#include "panel/ItemListModel.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace quillary::test {

namespace {

class ShelfSelectionTest : public testing::Test {
protected:
    ShelfSelectionTest() { show("abcdefgh"); }

    /// One file for each letter, in this order.
    void show(const std::string& letters) {
        auto items = std::make_shared<LibraryItems>();
        for (const char letter : letters) items->push_back({FileLocation("/shelf/" + std::string(1, letter) + ".png")});
        list.show(items);
        selection.prune();
    }
    std::string selected() const {
        std::string letters;
        for (const auto& file : selection.files()) letters += file.stem().string();
        return letters;
    }

    ItemListModel list{{}};
    ShelfSelection selection{list};
};

} // namespace

TEST_F(ShelfSelectionTest, FollowsTheModifierKeysOfAClick) {
    selection.toggle(2, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "c") << "without an anchor Shift is a plain click";
    selection.toggle(5, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "cdef");
    selection.toggle(0, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "abcdef") << "the other way, what was selected stays";
    selection.toggle(3, Qt::ControlModifier);
    EXPECT_EQ(selected(), "abcef");
    selection.toggle(7, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "abcdefgh") << "from the one taken out, which is the anchor now";
    selection.toggle(1, Qt::NoModifier);
    EXPECT_EQ(selected(), "b");
    selection.toggle(8, Qt::NoModifier);
    selection.toggle(-1, Qt::ControlModifier);
    EXPECT_EQ(selected(), "b");
}

TEST_F(ShelfSelectionTest, ExtendsAndShrinksByKeyboard) {
    selection.toggle(0, Qt::NoModifier);
    selection.toggle(3, Qt::ControlModifier);
    selection.extend(3, 4);
    selection.extend(4, 5);
    EXPECT_EQ(selected(), "adef");
    selection.extend(5, 4);
    EXPECT_EQ(selected(), "ade");
    selection.extend(4, 2);
    EXPECT_EQ(selected(), "acd");
    selection.clear();
    selection.extend(6, 7);
    EXPECT_EQ(selected(), "gh");
}

TEST_F(ShelfSelectionTest, StaysWithItsFilesNotWithItsRows) {
    selection.toggle(1, Qt::NoModifier);
    selection.toggle(3, Qt::ShiftModifier);
    const QSignalSpy changed(&selection, &ShelfSelection::changed);
    show("xabcdefgh");
    EXPECT_EQ(selected(), "bcd");
    EXPECT_EQ(changed.count(), 0);
    show("xabdefgh");
    EXPECT_EQ(selected(), "bd") << "what is gone is not selected";
    EXPECT_EQ(changed.count(), 1);
    const ShelfSelection::Relocation renamed[] = {{"/shelf/b.png", "/shelf/z.png"}};
    selection.follow(renamed);
    show("xazdefgh");
    EXPECT_EQ(selected(), "zd");
    selection.toggle(4, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "zde") << "the anchor followed too";
    selection.selectAll();
    EXPECT_EQ(selection.count(), 8);
}

} // namespace quillary::test
