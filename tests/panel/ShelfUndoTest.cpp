#include "PanelModelFixture.h"

#include "blocks/BlockFiles.h"
#include "drag/DragRequest.h"
#include "panel/ShelfHistory.h"
#include "samples/Clips.h"

namespace quillary::test {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

/// What is done to files can be taken back, and done again.
class ShelfUndoTest : public PanelModelTest {
protected:
    ShelfUndoTest() { qputenv("XDG_DATA_HOME", QByteArray((folder / "data").c_str())); }
    ~ShelfUndoTest() override { qunsetenv("XDG_DATA_HOME"); }

    std::string undone(Shelf& shelf) {
        shelf.undo();
        settle();
        return shelf.noteText().toStdString();
    }
    std::string redone(Shelf& shelf) {
        shelf.redo();
        settle();
        return shelf.noteText().toStdString();
    }
};

TEST_F(ShelfUndoTest, NamesAndPlacesComeBackByteForByte) {
    // A name that the panel itself would never give.
    const fs::path odd = shelved("a:b .png");
    const fs::path other = shelved("Logos/other.png");
    list(images());
    EXPECT_EQ(undone(images()), "Nothing to undo");
    images().toggleFavorite(urlOf(odd));
    images().rename(urlOf(odd), u"plain"_s);
    settle();
    const fs::path plain = odd.parent_path() / "plain.png";
    images().selection()->selectAll();
    images().move({urlOf(plain), urlOf(other)}, u"New / Deep"_s);
    settle();
    const fs::path deep = odd.parent_path() / "New/Deep";
    ASSERT_TRUE(fs::exists(deep / "plain.png") && fs::exists(deep / "other.png"));

    EXPECT_EQ(undone(images()), "Undid moving 2 files");
    EXPECT_TRUE(fs::exists(plain) && fs::exists(other));
    EXPECT_EQ(images().selection()->count(), 2) << "what comes back stays selected";
    EXPECT_EQ(undone(images()), "Undid renaming to “plain”");
    EXPECT_TRUE(fs::exists(odd));
    EXPECT_TRUE(model->favorites()->contains(odd)) << "the star comes back too";
    EXPECT_EQ(undone(images()), "Undid adding “a:b ” to favorites");
    EXPECT_FALSE(model->favorites()->contains(odd));
    EXPECT_EQ(redone(images()), "Redid adding “a:b ” to favorites");
    EXPECT_EQ(redone(images()), "Redid renaming to “plain”");
    EXPECT_TRUE(model->favorites()->contains(plain));
    // Several at once, behind one another.
    images().redo();
    images().undo();
    images().undo();
    settle();
    EXPECT_TRUE(fs::exists(odd) && fs::exists(other));
    images().rename(urlOf(other), u"third"_s);
    settle();
    EXPECT_EQ(redone(images()), "Nothing to redo") << "what is done anew has no way forth";
}

TEST_F(ShelfUndoTest, NothingOfOthersIsTouched) {
    const fs::path a = shelved("a.png");
    const fs::path b = shelved("b.png");
    list(images());
    images().rename(urlOf(a), u"c"_s);
    settle();
    const fs::path c = a.parent_path() / "c.png";
    writeFile(a, "somebody's");
    EXPECT_EQ(undone(images()), "Another file is called “a.png” by now; both stay as they are.");
    EXPECT_TRUE(images().noteIsProblem());
    EXPECT_EQ(readFile(a), "somebody's");
    EXPECT_TRUE(fs::exists(c));

    list(images());
    images().move({urlOf(b), urlOf(c)}, u"Logos"_s);
    settle();
    fs::remove(a.parent_path() / "Logos/c.png");
    EXPECT_EQ(undone(images()), "“c.png” is no longer there.");
    EXPECT_TRUE(fs::exists(b)) << "the rest is done";
}

TEST_F(ShelfUndoTest, AnotherFileUnderTheNameIsNotTheOneThatWasChanged) {
    const fs::path a = shelved("a.png");
    const fs::path c = shelved("c.png");
    const fs::path b = a.parent_path() / "b.png";
    list(images());
    images().rename(urlOf(a), u"b"_s);
    settle();
    fs::remove(b);
    writeFile(b, "somebody's");
    EXPECT_EQ(undone(images()), "Another file is called “b.png” by now; it stays as it is.");
    EXPECT_EQ(readFile(b), "somebody's");
    EXPECT_FALSE(fs::exists(a));

    images().trash({urlOf(c)});
    settle();
    const fs::path inTrash = folder / "data/Trash/files/c.png";
    ASSERT_TRUE(fs::exists(inTrash));
    fs::remove(inTrash);
    writeFile(inTrash, "somebody's");
    EXPECT_EQ(undone(images()), "“c.png” is not in the trash any more.");
    EXPECT_FALSE(fs::exists(c));

    // What the panel itself puts in a file's place is that file.
    const fs::path d = shelved("d.png", picture(6, 4));
    const std::string before = readFile(d);
    list(images());
    images().rename(urlOf(d), u"e"_s);
    settle();
    const fs::path e = d.parent_path() / "e.png";
    images().transform({urlOf(e)}, u"rotateLeft"_s);
    settle();
    images().remove({urlOf(e)});
    settle();
    EXPECT_FALSE(fs::exists(e));
    for (int step = 0; step < 3; ++step) undone(images());
    EXPECT_EQ(readFile(d), before) << images().noteText().toStdString();
    for (int step = 0; step < 3; ++step) redone(images());
    EXPECT_FALSE(fs::exists(d) || fs::exists(e)) << images().noteText().toStdString();
    for (int step = 0; step < 3; ++step) undone(images());
    EXPECT_EQ(readFile(d), before) << images().noteText().toStdString();
    for (int step = 0; step < 2; ++step) redone(images());
    fs::remove(e);
    writeFile(e, "somebody's");
    EXPECT_EQ(redone(images()), "Another file is called “e.png” by now; it stays as it is.");
    EXPECT_EQ(readFile(e), "somebody's");
}

TEST_F(ShelfUndoTest, WhatWasRemovedComesBackUnlessItsNameIsTaken) {
    const fs::path a = shelved("a.png");
    const fs::path target = writeFile(folder / "elsewhere.png", readFile(a));
    const fs::path link = a.parent_path() / "link.png";
    fs::create_symlink("../../../../elsewhere.png", link);
    Storage::setSourceFormat(a, u"svg"_s);
    const auto date = fs::last_write_time(a);
    const std::string bytes = readFile(a);
    list(images());
    images().remove({urlOf(a), urlOf(link)});
    settle();
    EXPECT_EQ(images().noteText().toStdString(), "Removed 2 files · Ctrl+Z undoes it");
    EXPECT_EQ(images().count(), 0);
    EXPECT_EQ(undone(images()), "Undid removing 2 files");
    EXPECT_EQ(readFile(a), bytes);
    EXPECT_EQ(fs::last_write_time(a), date);
    EXPECT_EQ(Storage::sourceFormat(a), u"svg"_s);
    EXPECT_EQ(fs::read_symlink(link), "../../../../elsewhere.png");
    EXPECT_EQ(readFile(target), bytes);
    redone(images());
    EXPECT_EQ(images().count(), 0);
    writeFile(a, "somebody's");
    EXPECT_EQ(undone(images()), "Another file is called “a.png” by now; it stays as it is.");
    EXPECT_EQ(readFile(a), "somebody's");
    EXPECT_TRUE(fs::is_symlink(link)) << "the rest is done";
}

TEST_F(ShelfUndoTest, ATurnedPictureIsTheVeryFileAgain) {
    QImage deep(30, 20, QImage::Format_RGBA64);
    deep.fill(QColor::fromRgba64(1, 30000, 65535));
    const fs::path image = shelved("deep.png", deep);
    Storage::setSourceFormat(image, u"png"_s);
    fs::last_write_time(image, fs::file_time_type::clock::now() - std::chrono::hours(5));
    const auto date = fs::last_write_time(image);
    const std::string before = readFile(image);
    list(images());
    images().transform({urlOf(image)}, u"rotateLeft"_s);
    settle();
    images().transform({urlOf(image)}, u"flipVertical"_s);
    settle();
    const std::string after = readFile(image);
    ASSERT_NE(after, before);
    EXPECT_EQ(undone(images()), "Undid Flip Vertical of “deep”");
    EXPECT_EQ(undone(images()), "Undid Rotate Left of “deep”");
    EXPECT_EQ(readFile(image), before) << "sixteen bits a channel, which turning does not keep";
    EXPECT_EQ(fs::last_write_time(image), date);
    EXPECT_EQ(Storage::sourceFormat(image), u"png"_s);
    redone(images());
    redone(images());
    EXPECT_EQ(readFile(image), after);

    writeFile(image, "painted over");
    EXPECT_EQ(undone(images()), "“deep.png” was changed by another program since; it stays as it is.");
    EXPECT_EQ(readFile(image), "painted over");
}

TEST_F(ShelfUndoTest, TheTrashGivesBackABlockWithItsPoster) {
    BlocksShelf& blocks = *model->blocksShelf();
    ArrangementStore arrangements(storage);
    const auto block = arrangements.save(richCompound(folder / "media"), u"Intro"_s, {});
    ASSERT_TRUE(block) << block.error().description().toStdString();
    ASSERT_TRUE(arrangements.setPoster(picture(8, 8), block->url));
    list(blocks);
    blocks.move({urlOf(block->url)}, u"Filed"_s);
    settle();
    EXPECT_EQ(undone(blocks), "Undid moving “Intro”");
    EXPECT_TRUE(fs::exists(posterPath(block->url)));
    blocks.trash({urlOf(block->url)});
    settle();
    EXPECT_EQ(blocks.noteText().toStdString(), "Moved “Intro” to the trash");
    EXPECT_FALSE(fs::exists(block->url) || fs::exists(posterPath(block->url)));
    undone(blocks);
    EXPECT_TRUE(fs::exists(block->url) && fs::exists(posterPath(block->url)));
    const std::string poster = readFile(posterPath(block->url));
    blocks.remove({urlOf(block->url)});
    settle();
    EXPECT_EQ(blocks.noteText().toStdString(), "Removed “Intro” · Ctrl+Z undoes it");
    EXPECT_FALSE(fs::exists(block->url) || fs::exists(posterPath(block->url)));
    EXPECT_EQ(undone(blocks), "Undid removing “Intro”");
    EXPECT_TRUE(fs::exists(block->url));
    EXPECT_EQ(readFile(posterPath(block->url)), poster);
}

TEST_F(ShelfUndoTest, TheHistoryIsBoundedInStepsAndFiles) {
    ShelfHistory history;
    for (int step = 0; step < 120; ++step) history.record({.name = QString::number(step), .revert = {}});
    std::size_t left = 0;
    QString oldest;
    while (auto step = history.take(ShelfHistory::Direction::undo)) {
        oldest = step->name;
        ++left;
    }
    EXPECT_EQ(left, ShelfHistory::mostSteps);
    EXPECT_EQ(oldest, u"20"_s);
    history.record({.name = u"old"_s, .revert = {}, .keptFiles = 150});
    history.record({.name = u"new"_s, .revert = {}, .keptFiles = 100});
    EXPECT_EQ(history.take(ShelfHistory::Direction::undo)->name, u"new"_s);
    EXPECT_FALSE(history.take(ShelfHistory::Direction::undo));
}

TEST_F(ShelfUndoTest, ADragOfTheSelectionCarriesAllInTheOrderShown) {
    const fs::path old = shelved("z.png");
    fs::last_write_time(old, fs::file_time_type::clock::now() - std::chrono::hours(1));
    const fs::path fresh = shelved("a.png");
    list(images());
    images().selection()->selectAll();
    DragRequest request;
    images().fillDragOfSelection(&request);
    EXPECT_EQ(request.urls, (QStringList{urlOf(fresh), urlOf(old)}));
}

} // namespace quillary::test
