#include "panel/ListingCache.h"
#include "panel/PanelModelFixture.h"
#include "platform/SettingsStore.h"

namespace quillary::test {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

class ShelfTest : public PanelModelTest {
protected:
    /// A sound on its shelf.
    void sound(const std::string& name) { writeFile(root() / "Library/Audio" / name, "sound"); }
    static std::vector<std::string> names(const Shelf& shelf) {
        std::vector<std::string> found;
        for (const LibraryItem& item : shelf.visible()) found.emplace_back(item.url.nameStem());
        return found;
    }
    static QString urlIn(const Shelf& shelf, const std::string& stem) {
        for (const LibraryItem& item : shelf.visible())
            if (item.url.nameStem() == stem) return urlOf(item.url);
        return {};
    }
    static std::string numbered(std::size_t i) { return "Frame " + std::to_string(i) + ".png"; }
};

using Names = std::vector<std::string>;

TEST_F(ShelfTest, EveryShelfIsNarrowedAndLookedAfterAlike) {
    for (const char* name : {"Whoosh 10.wav", "Whoosh 2.wav", "Rain/Heavy.wav"}) sound(name);
    list(audio());
    audio().setAudioSort(AudioShelf::AudioSort::name);
    EXPECT_EQ(names(audio()), (Names{"Heavy", "Whoosh 2", "Whoosh 10"}));
    EXPECT_FALSE(audio().filtered());
    audio().setSearch(u"whoosh"_s);
    EXPECT_TRUE(audio().filtered());
    EXPECT_EQ(names(audio()).size(), 2U);
    audio().clearFilters();

    audio().selection()->selectAll();
    audio().move(audio().selection()->urls(), u"Wind / Strong"_s);
    settle();
    EXPECT_EQ(audio().selection()->count(), 3) << "what moved stays selected";
    EXPECT_EQ(audio().counts().value(u"Wind"_s), 3);
    audio().remove({urlIn(audio(), "Heavy"), u"file:///elsewhere.wav"_s});
    settle();
    EXPECT_EQ(names(audio()), (Names{"Whoosh 2", "Whoosh 10"}));
    fs::remove(root() / "Library/Audio/Wind/Strong/Whoosh 2.wav");
    const QString gone = urlIn(audio(), "Whoosh 2");
    audio().rename(gone, u"x"_s);
    settle();
    EXPECT_TRUE(audio().note().value_or(QString()).startsWith(u"Could not move Whoosh 2.wav"_s)) << "two panels";
}

TEST_F(ShelfTest, AFavoriteIsOneOnEveryShelf) {
    sound("Rain.wav");
    shelved("a.png");
    model->refreshShelves();
    settle();
    audio().toggleFavorite(urlIn(audio(), "Rain"));
    model->favorites()->setOnly(true);
    EXPECT_EQ(names(audio()), Names{"Rain"});
    EXPECT_EQ(names(images()), Names{});
    EXPECT_TRUE(images().filtered());
    images().clearFilters();
    EXPECT_EQ(names(images()), Names{"a"});
    EXPECT_FALSE(audio().filtered());
}

TEST_F(ShelfTest, AStarThatAnotherProcessSetsShows) {
    const fs::path image = shelved("a.png");
    const auto here = platform::settingsIn(folder / "config/quillary/quillary.conf");
    const auto there = platform::settingsIn(folder / "config/quillary/quillary.conf");
    Storage own(*here, bookmarks, desktop, folder / "library");
    Storage other(*there, bookmarks, desktop, folder / "library");
    AppSettings ownSettings(*here);
    Favorites stars(own, ownSettings);
    stars.follow(root());
    int told = 0;
    QObject::connect(&stars, &Favorites::changed, [&] { ++told; });
    for (const bool starred : {true, false, true}) {
        other.setFavorites(std::array{image}, starred);
        EXPECT_TRUE(comesTrue([&] { return stars.contains(image) == starred; }, 1'000));
    }
    const int before = told;
    there->setValue(SettingsKey::recentLimit, 7);
    EXPECT_FALSE(comesTrue([&] { return told != before; }, 400)) << "another setting";
}

TEST_F(ShelfTest, AnEmptyCollectionStaysSelectedUntilThePanelListsAgain) {
    shelved("a.png");
    list(images());
    images().createCollection(u"New"_s);
    settle();
    ASSERT_EQ(images().placePath(), u"New"_s);
    shelved("b.png");
    ASSERT_TRUE(comesTrue([&] { return images().count() == 2; })) << "what others add shows by itself";
    EXPECT_EQ(images().placePath(), u"New"_s) << "a change on disk takes no selection away";
    images().refresh();
    images().pick(Shelf::Place::Collection, u"New"_s);
    settle();
    EXPECT_EQ(images().placePath(), u"New"_s) << "a listing under way does not undo a later choice";
    list(images());
    EXPECT_EQ(images().place(), Shelf::Place::All);
    images().pick(Shelf::Place::Collection, u"New"_s);
    fs::remove(root() / "Library/Images/New");
    ASSERT_TRUE(comesTrue([&] { return images().place() == Shelf::Place::All; })) << "a folder vanishes while shown";
}

TEST_F(ShelfTest, TheImagesHavePlacesOfTheirOwn) {
    writeFile(folder / "BuiltIn/Arrows/Arrow.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='4' height='4'/>");
    file("library/Quillary/Recent/dragged.png", picture(2, 2));
    shelved("top.png");
    shelved("A/B/deep.png");
    model->refreshShelves();
    settle();
    images().pick(Shelf::Place::Unfiled, {});
    EXPECT_EQ(names(images()), Names{"top"});
    images().pick(Shelf::Place::Collection, u"A"_s);
    EXPECT_EQ(names(images()), Names{"deep"});
    images().pick(Shelf::Place::Recent, {});
    EXPECT_EQ(names(images()), Names{"dragged"});
    EXPECT_EQ(images().collectionFilter().collection(), std::nullopt) << "drops go to the top of the shelf";
    images().setSearch(u"zebra"_s);
    EXPECT_EQ(names(images()), Names{});
    images().setSearch({});
    const QString dragged = urlIn(images(), "dragged");
    fs::remove(root() / "Recent/dragged.png");
    EXPECT_EQ(images().dragFileUrl(dragged), QString());
    EXPECT_EQ(images().note(), u"“dragged” is no longer there."_s);
    images().pick(Shelf::Place::BuiltIn, u"Arrows"_s);
    EXPECT_EQ(names(images()), Names{"Arrow"});
}

TEST_F(ShelfTest, ShowsWhateverNamesFilesHave) {
    const fs::path shelf = root() / "Library/Images";
    fs::path deep = shelf;
    for (int level = 0; level < 500; ++level) deep /= "d";
    std::error_code tooDeep;
    fs::create_directories(deep, tooDeep);
    for (const char* name : {"line\nbreak", "emoji 🎬", "עברית", "cafe\u0301", "no \xff text"})
        shelved(std::string("A/") + name + ".png");
    fs::create_directory_symlink(shelf, shelf / "A/loop");
    list(images());
    EXPECT_EQ(images().count(), 5);
    EXPECT_EQ(images().collectionFolders().contains(u"A / loop"_s), false);
    for (const LibraryItem& item : images().visible()) {
        const auto dragged = pathOfFileUrl(images().dragFileUrl(urlOf(item.url)).toLatin1());
        EXPECT_EQ(dragged, item.url.path());
    }
    images().selection()->selectAll();
    images().move(images().selection()->urls(), u"B"_s);
    settle();
    EXPECT_EQ(images().counts().value(u"B"_s), 5) << images().noteText().toStdString();
}

TEST_F(ShelfTest, ALargeShelfStandsAtOnceAtTheNextStart) {
    const fs::path shelf = root() / "Library/Images";
    const fs::path original = shelved("Logos/no \xff text.png");
    for (std::size_t i = 0; i < ListingCache::worthwhile; ++i) fs::create_hard_link(original, shelf / numbered(i));
    list(images());
    ASSERT_EQ(images().count(), int(ListingCache::worthwhile) + 1);
    const LibraryItem first = images().items().front();

    fs::rename(shelf / "Logos", shelf / "Renamed");
    fs::remove(first.url.path());
    make();
    images().refresh();
    ASSERT_TRUE(comesTrue([&] { return images().loaded(); }));
    EXPECT_FALSE(images().upToDate());
    EXPECT_EQ(images().items().size(), ListingCache::mostItems);
    EXPECT_EQ(images().items().front(), first);
    EXPECT_EQ(images().count(), int(ListingCache::worthwhile) + 1);
    EXPECT_EQ(images().collections(), QStringList{u"Logos"_s});
    EXPECT_EQ(images().counts().value(u"Logos"_s), 1);
    images().pick(Shelf::Place::Collection, u"Logos"_s);
    ASSERT_TRUE(comesTrue([&] { return images().upToDate(); })) << "what is there follows by itself";
    EXPECT_EQ(images().collections(), QStringList{u"Renamed"_s});
    EXPECT_EQ(images().place(), Shelf::Place::All) << "a place that was only remembered is gone";

    const fs::path remembered = fs::directory_iterator(desktop.cacheFolder() / "quillary/shelves")->path();
    const std::string whole = readFile(remembered);
    for (const std::size_t size : {std::size_t(0), std::size_t(9), whole.size() / 2, whole.size() - 1}) {
        writeFile(remembered, whole.substr(0, size));
        make();
        list(images());
        EXPECT_TRUE(images().upToDate()) << "cut at " << size;
    }
    fs::create_directories(folder / "away");
    for (std::size_t i = 1; i < 100; ++i) fs::rename(shelf / numbered(i), folder / "away" / numbered(i));
    ASSERT_TRUE(comesTrue([&] { return images().count() < int(ListingCache::worthwhile); }));
    EXPECT_FALSE(fs::exists(remembered)) << "a small shelf is not remembered";
}

} // namespace quillary::test
