#include "LibraryFixture.h"

#include "platform/FileAttributes.h"

#include <sys/stat.h>

using namespace quillary;
using namespace quillary::test;
using namespace Qt::StringLiterals;

namespace {

using StorageWritingTest = LibraryTest;

} // namespace

TEST_F(StorageWritingTest, writesWholePicturesUnderFreeNames) {
    for (const char* name : {"Logo.png", "Logo 2.png", "Logo 3.png"})
        EXPECT_EQ(storage.write(pasted(u"Logo"_s), Folder::images, {}), images / name);
    EXPECT_EQ(storage.write(pasted(u" a/b "_s), Folder::images, u"Logos / New"_s), images / "Logos/New/a-b.png");
    EXPECT_EQ(storage.write(pasted(QString(100, u'x')), Folder::recent, {}), recent / (std::string(80, 'x') + ".png"));
    EXPECT_EQ(storage.write(pasted(QString(100, u'x'), Qt::blue), Folder::recent, {}),
              recent / (std::string(80, 'x') + " 2.png"));
    EXPECT_EQ(storage.write(pasted(u"東"_s.repeated(100)), Folder::images, {})->filename().native().size(),
              80 * 3 + 4U);
    EXPECT_EQ(QImage(QString::fromStdString((images / "Logo 3.png").native())).pixelColor(3, 2), QColor(Qt::red));
}

TEST_F(StorageWritingTest, stampsWhatThePictureWasMadeFrom) {
    PastedImage image = pasted(u"vector"_s, Qt::blue, 12345);
    image.formatLabel = u"SVG"_s;
    const fs::path made = *storage.write(image, Folder::images, {});
    EXPECT_EQ(Storage::sourceFormat(made), u"svg"_s);
    EXPECT_EQ(Storage::sourceSize(made), 12345);
    const fs::path bitmap = *storage.write(pasted(u"bitmap"_s), Folder::images, {});
    EXPECT_EQ(Storage::sourceSize(bitmap), std::nullopt);
    Storage::setSourceFormat(bitmap, u"JPEG"_s);
    Storage::setSourceSize(bitmap, 7);
    EXPECT_EQ(Storage::sourceFormat(bitmap), u"jpeg"_s);
    EXPECT_EQ(Storage::sourceSize(bitmap), 7);
    platform::setAttribute(bitmap, Storage::sourceSizeAttribute, "7 bytes");
    EXPECT_EQ(Storage::sourceSize(bitmap), std::nullopt);
}

TEST_F(StorageWritingTest, aPreparedPictureIsNamedLastAndDatedThen) {
    auto first = *storage.prepare(pasted(u"early"_s), Folder::recent, {});
    auto second = *storage.prepare(pasted(u"early"_s, Qt::blue), Folder::recent, {});
    EXPECT_TRUE(everythingIn(recent).empty() || everythingIn(recent).begin()->starts_with("."));
    EXPECT_EQ(storage.place(std::move(second)), recent / "early.png");
    EXPECT_EQ(storage.place(std::move(first)), recent / "early 2.png");
    { const auto dropped = storage.prepare(pasted(u"dropped"_s), Folder::recent, {}); }
    EXPECT_EQ(everythingIn(recent).size(), 2U);
    EXPECT_EQ(storage.prepare({}, Folder::recent, {}).error(), StorageError::couldNotEncodePNG());
    auto late = *storage.prepare(pasted(u"late"_s), Folder::images, u"Gone"_s);
    fs::remove_all(images / "Gone");
    EXPECT_EQ(storage.place(std::move(late)).error().description(),
              u"Could not write late.png: No such file or directory"_s);
}

TEST_F(StorageWritingTest, recentKeepsOnePictureOnce) {
    using namespace std::chrono;
    const auto old = fs::file_time_type::clock::now() - 24h;
    const auto isNew = [](const fs::path& file) {
        return fs::last_write_time(file) > fs::file_time_type::clock::now() - 1h;
    };
    for (const QColor& color : {QColor(Qt::red), QColor(Qt::blue)})
        ASSERT_TRUE(storage.write(pasted(u"a"_s, color), Folder::recent, {}));
    for (const char* name : {"a.png", "a 2.png"}) fs::last_write_time(recent / name, old);
    auto ahead = *storage.prepare(pasted(u"a"_s, Qt::blue), Folder::recent, {});
    EXPECT_EQ(storage.write(pasted(u"a"_s, Qt::blue), Folder::recent, {}), recent / "a 2.png");
    EXPECT_TRUE(isNew(recent / "a 2.png"));
    EXPECT_FALSE(isNew(recent / "a.png"));
    EXPECT_EQ(storage.place(std::move(ahead)), recent / "a 2.png") << "also when it was moved up meanwhile";
    EXPECT_EQ(storage.write(pasted(u"b"_s), Folder::recent, {}), recent / "b.png") << "under another name it is new";

    auto gone = *storage.prepare(pasted(u"a"_s), Folder::recent, {});
    fs::remove(recent / "a.png");
    EXPECT_EQ(storage.place(std::move(gone)), recent / "a.png");
    EXPECT_EQ(QImage(QString::fromStdString(recent / "a.png")).pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(storage.place(*storage.prepareCopy(recent / "b.png", u"a"_s)), recent / "a.png");
    EXPECT_EQ(everythingIn(recent).size(), 3U);
}

TEST_F(StorageWritingTest, storesVerbatimOncePerContentSize) {
    writeFile(folder / "in/a:b.WAV", "sound");
    platform::setAttribute(folder / "in/a:b.WAV", "note", "kept");
    const fs::path audio = root / "Library/Audio";
    const auto store = [&] { return storage.storeVerbatim(folder / "in/a:b.WAV", Folder::audio, u"Fx"_s); };
    EXPECT_EQ(store()->url, audio / "Fx/a:b.WAV") << "its own name, not a sanitized one";
    EXPECT_EQ(platform::attribute(audio / "Fx/a:b.WAV", "note"), "kept");
    setDate(audio / "Fx/a:b.WAV", 1000);
    const auto again = store();
    EXPECT_TRUE(again->wasAlreadyThere);
    EXPECT_GT(fs::last_write_time(again->url), fs::file_time_type::clock::now() - std::chrono::minutes(1));
    writeFile(folder / "in/a:b.WAV", "another sound");
    EXPECT_EQ(store()->url, audio / "Fx/a:b 2.WAV");
    EXPECT_EQ(store()->url, audio / "Fx/a:b 2.WAV") << "numbered files are the same ones too";
    EXPECT_EQ(everythingIn(audio), (std::set<std::string>{"Fx", "Fx/a:b.WAV", "Fx/a:b 2.WAV"}));
    fs::create_directories(audio / "folder.wav");
    writeFile(folder / "in/folder.wav", "x");
    EXPECT_EQ(storage.storeVerbatim(folder / "in/folder.wav", Folder::audio, {})->url, audio / "folder 2.wav");
    writeFile(folder / "in/\xff.wav", "bytes");
    EXPECT_EQ(storage.storeVerbatim(folder / "in/\xff.wav", Folder::audio, {})->url, audio / "\xff.wav");
}

TEST_F(StorageWritingTest, whatCannotBeReadIsToldAtOnce) {
    ASSERT_EQ(mkfifo((folder / "pipe.mov").c_str(), 0600), 0);
    fs::create_symlink("nowhere", folder / "dangling.mov");
    for (const std::string name : {"missing.mov", "pipe.mov", "dangling.mov", "home"})
        EXPECT_EQ(storage.storeVerbatim(folder / name, Folder::videos, {}).error().description().toStdString(),
                  "Could not read " + name + ".");
}

TEST_F(StorageWritingTest, alreadySaved) {
    const auto file = [&](const char* name, std::size_t size, char fill = 'x') {
        return writeFile(folder / "in" / name, std::string(size, fill));
    };
    const auto library = [&](const char* name, std::size_t size, std::optional<qint64> source = {}, char fill = 'x') {
        writeFile(images / name, std::string(size, fill));
        if (source) Storage::setSourceSize(images / name, *source);
    };
    library("Logo.png", 100, 500);
    library("Logo 2.png", 200, 600);
    library("a-b.png", 50);
    library("Set/Icon.png", 70, 71);
    library("kept.JPG", 33);
    const struct {
        const char* what;
        fs::path file;
        std::optional<QString> collection;
        bool expected;
    } cases[] = {
        {"the source of the picture", file("Logo.svg", 500), {}, true},
        {"the source of a numbered one", file("Logo.tiff", 600), {}, true},
        {"another source", file("Logo.jpg", 501), {}, false},
        {"the stored file itself", file("Logo.png", 100), {}, true},
        {"another file that happens to have its size", file("in/Logo.png", 100, 'y'), {}, false},
        {"the size of an unstamped file", file("a:b.png", 50, 'y'), {}, true},
        {"elsewhere", file("Icon.svg", 71), {}, false},
        {"in its collection", file("Icon.svg", 71), u"Set"_s, true},
        {"in a collection that is not there", file("Icon.svg", 71), u"Set / Deep"_s, false},
        {"kept as it was", file("kept.JPG", 33), {}, true},
        {"missing", folder / "missing.png", {}, false},
    };
    for (const auto& [what, path, collection, expected] : cases)
        EXPECT_EQ(storage.alreadySaved(path, Folder::images, collection), expected) << what;
}
