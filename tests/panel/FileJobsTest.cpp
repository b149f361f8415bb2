#include "panel/FileJobs.h"
#include "panel/PanelModelFixture.h"

namespace quillary::test {

namespace {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;
using Paths = std::vector<fs::path>;

/// What becomes of files that were to be stored, in this life of the panel or the next.
class FileJobsTest : public PanelModelTest {
protected:
    Paths pictures(int count) {
        Paths files;
        for (int number = 0; number < count; ++number)
            files.push_back(file("many/" + std::to_string(number) + ".png", picture(40 + number, 9)));
        return files;
    }
    fs::path notes() { return FileJobs::notesIn(desktop.cacheFolder()); }
    /// A panel that is ended with its batches under way, and the next one.
    void startAgain() {
        model.reset();
        saves.waitForDone();
        make();
        model->appear();
        settle();
    }
    UnfinishedWork& left() { return *model->unfinishedWork(); }
};

TEST_F(FileJobsTest, NotesSurviveTornLinesAndOddNames) {
    const JobRecord record{.root = "/lib rary/\xff",
                           .files = {"/a b", "/c\nd", "/\xfe"},
                           .target = {.images = u"Logos / Ünï"_s, .keepFolders = true, .only = Storage::Folder::audio}};
    QByteArray text = record.text() + JobRecord::done(1) + "done";
    const auto read = JobRecord::of(text.toStdString());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->root, record.root);
    EXPECT_EQ(read->files, (Paths{"/a b", "/\xfe"}));
    EXPECT_EQ(read->target.images, record.target.images);
    EXPECT_EQ(read->target.videos, std::nullopt);
    EXPECT_TRUE(read->target.keepFolders);
    EXPECT_EQ(read->target.only, Storage::Folder::audio);

    text = record.text() + JobRecord::listed({"/x", "/y"}) + JobRecord::done(0) + JobRecord::done(7);
    EXPECT_EQ(JobRecord::of(text.toStdString())->files, Paths{"/y"});
    EXPECT_FALSE(JobRecord::of((text + JobRecord::done(1)).toStdString())) << "all is done";
    EXPECT_FALSE(JobRecord::of("kind of a file\nfile file:///a\n"));

    const JobRecord copy{.kind = JobRecord::Kind::libraryCopy,
                         .root = "/to",
                         .from = "/from",
                         .selection = {.images = false, .recent = false}};
    const auto copied = JobRecord::of(copy.text().toStdString());
    ASSERT_TRUE(copied);
    EXPECT_EQ(copied->from, "/from");
    EXPECT_FALSE(copied->selection.images || copied->selection.recent);
    EXPECT_TRUE(copied->selection.videos && copied->selection.audio && copied->selection.blocks);
}

TEST_F(FileJobsTest, WhatAPanelLeftIsToldByTheNextAndFiledOnRequest) {
    const Paths files = pictures(30);
    images().setCollectionFilter(CollectionFilter::named(u"Logos"_s));
    model->saveToLibrary({folder / "many"});
    model->saveToLibrary({files.front(), folder / "gone.png"});
    startAgain();
    ASSERT_FALSE(left().text().isEmpty());
    EXPECT_TRUE(left().files().contains(QString::fromStdString(folder / "gone.png")));
    const std::size_t before = images().library().size();
    EXPECT_LT(before, files.size());

    left().resume();
    EXPECT_EQ(left().text(), QString());
    settle();
    EXPECT_EQ(images().library().size(), files.size());
    EXPECT_EQ(images().counts().value(u"Logos"_s), 30) << "where they were to go";
    EXPECT_TRUE(model->librarySaveNote()->endsWith(u"couldn't read 1"_s)) << model->librarySaveNote()->toStdString();
    EXPECT_TRUE(fs::is_empty(notes()));
    startAgain();
    EXPECT_EQ(left().text(), QString());
}

TEST_F(FileJobsTest, ABatchThatIsStoppedTellsWhatIsMissing) {
    pictures(30);
    model->saveToLibrary({folder / "many"});
    model->importQueue()->stop();
    settle();
    EXPECT_FALSE(model->importing());
    EXPECT_TRUE(model->importQueue()->isProblem());
    ASSERT_FALSE(left().text().isEmpty());
    left().dismiss();
    EXPECT_TRUE(fs::is_empty(notes()));
    startAgain();
    EXPECT_EQ(left().text(), QString());
}

TEST_F(FileJobsTest, AnotherPanelsWorkAndAnotherLibrarysAreLeftAlone) {
    FileJobs others(notes());
    const auto running = others.begin({.root = root(), .files = {"/a.png"}});
    others.begin({.root = "/another/library", .files = {"/b.png"}})->letGo();
    startAgain();
    EXPECT_EQ(left().text(), QString());
    running->letGo();
    startAgain();
    EXPECT_EQ(left().files(), QStringList{u"/a.png"_s});
}

} // namespace

} // namespace quillary::test
