#include "cli/ProgramTest.h"
#include "platform/FileAttributes.h"

#include <QFileInfo>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace quillary::test {

namespace {

using IntakeTest = ProgramTest;

const std::string icon = R"(<svg xmlns="http://www.w3.org/2000/svg" width="100" height="50"><circle r="5"/></svg>)";

QJsonObject facts(const char* document) {
    return QJsonDocument::fromJson(document).object();
}

TEST_F(IntakeTest, TellsWhatItRead) {
    struct Case {
        QString file;
        const char* facts;
    };
    writeFile(m_folder / "icon.svg", icon);
    const Case cases[] = {
        {picture("a b.png", QColor(1, 2, 3), {999, 400}),
         R"({"name":"a b","pixelWidth":999,"pixelHeight":400,"hasAlphaChannel":false,"formatLabel":"PNG",
             "warning":"Small for a 4K timeline — fine at this size on screen, soft if you scale it up."})"},
        {picture("glass.png", QColor(1, 2, 3, 40), {1000, 1000}),
         R"({"name":"glass","pixelWidth":1000,"pixelHeight":1000,"hasAlphaChannel":true,"warning":null})"},
        {picture("photo.JPG", Qt::green, {10, 20}, "JPG"),
         R"({"name":"photo","formatLabel":"JPG","hasAlphaChannel":false})"},
        {in("icon.svg"),
         R"({"name":"icon","pixelWidth":4096,"pixelHeight":2048,"hasAlphaChannel":true,"formatLabel":"SVG",
             "source":{"kind":"rasterizedVector","value":"icon.svg"},"provenance":"Rasterized from icon.svg"})"},
    };
    for (const auto& [file, expected] : cases) {
        const Ended ended = json({u"intake"_s, file});
        ASSERT_EQ(ended.status, 0) << file.toStdString() << ended.err.toStdString();
        const QJsonObject object = ended.object();
        EXPECT_EQ(object.keys().size(), 9);
        EXPECT_EQ(object["sourceBytes"_L1].toInteger(), QFileInfo(file).size());
        const QJsonObject wanted = facts(expected);
        ASSERT_FALSE(wanted.isEmpty());
        for (auto fact = wanted.begin(); fact != wanted.end(); ++fact)
            EXPECT_EQ(object[fact.key()], fact.value()) << file.toStdString() << fact.key().toStdString();
    }
    EXPECT_FALSE(std::filesystem::exists(root())) << "reading a picture makes no library";
}

TEST_F(IntakeTest, WritesTheExportedPicture) {
    const QString source = picture("source.png", QColor(10, 20, 30, 40), {31, 17});
    const QString output = in("out.png");
    writeFile(m_folder / "out.png", "old");
    ASSERT_EQ(run({u"intake"_s, source, u"--output"_s, output}).status, 0);
    EXPECT_EQ(QImage(output).convertToFormat(QImage::Format_RGBA8888),
              QImage(source).convertToFormat(QImage::Format_RGBA8888));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_folder.path()), {}), 3) << "home, source and output";

    std::filesystem::create_directory(m_folder / "folder");
    ASSERT_EQ(mkfifo((m_folder / "pipe").c_str(), 0600), 0);
    for (const char* place : {"folder", "pipe", "none/out.png", "out.png/x.png"}) {
        const Ended ended = json({u"intake"_s, source, u"--output"_s, in(place)});
        EXPECT_EQ(ended.status, 1) << place;
        EXPECT_TRUE(ended.error().startsWith(u"Could not write "_s)) << ended.error().toStdString();
    }
    EXPECT_TRUE(std::filesystem::is_fifo(m_folder / "pipe"));
}

TEST_F(IntakeTest, ReadsStandardInputByItsContent) {
    const std::string png = readFile(picture("a.png").toStdString());
    const auto read = [&](const std::string& bytes) {
        return run({u"--json"_s, u"intake"_s, u"-"_s}, QByteArray::fromStdString(bytes));
    };
    const QJsonObject bitmap = read(png).object();
    EXPECT_EQ(bitmap["name"_L1], u"Pasted Image"_s);
    EXPECT_EQ(bitmap["source"_L1], facts(R"({"kind":"bitmap","value":"image/png"})"));
    EXPECT_TRUE(bitmap["sourceBytes"_L1].isNull());
    const std::string commented = "<!--" + std::string(2000, 'x') + "-->" + icon;
    EXPECT_EQ(read(commented).object()["pixelWidth"_L1], 4096);
    for (const auto& bytes : {std::string(), std::string("no picture"), png.substr(0, 20)}) {
        const Ended ended = read(bytes);
        EXPECT_EQ(ended.status, 1);
        EXPECT_EQ(ended.error(), u"Could not read standard input."_s);
    }
}

TEST_F(IntakeTest, CreditsTellWhereAFileWasFound) {
    const QString known = picture("found.png");
    const QString own = picture("own.png");
    platform::setAttribute(known.toStdString(), "xdg.origin.url", "https://x.example/found.png");
    platform::setAttribute(own.toStdString(), "xdg.referrer.url", "no address");
    EXPECT_EQ(run({u"credits"_s, known, own}).out, "found — https://x.example/found.png\n");
    const Ended ended = json({u"credits"_s, own, in("none.png"), known});
    EXPECT_EQ(ended.status, 1);
    const QJsonArray array = QJsonDocument::fromJson(ended.out).array();
    ASSERT_EQ(array.size(), 2);
    EXPECT_TRUE(array[0]["page"_L1].isNull());
    EXPECT_EQ(array[1]["image"_L1], u"https://x.example/found.png"_s);
}

TEST_F(IntakeTest, UnreadableInputIsToldAtOnce) {
    writeFile(m_folder / "empty.png", "");
    writeFile(m_folder / "cut.png", readFile(picture("whole.png").toStdString()).substr(0, 30));
    writeFile(m_folder / "text.svg", "no drawing");
    std::filesystem::create_directory(m_folder / "folder.png");
    std::filesystem::create_symlink("nowhere", m_folder / "dangling.png");
    std::filesystem::create_symlink("loop.png", m_folder / "loop.png");
    ASSERT_EQ(mkfifo((m_folder / "pipe.png").c_str(), 0600), 0);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    const std::string path = m_folder / "socket.png";
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    ASSERT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(descriptor);

    for (const char* name : {"none.png", "empty.png", "cut.png", "text.svg", "folder.png", "dangling.png", "loop.png",
                             "pipe.png", "socket.png"}) {
        for (const char* command : {"intake", "recent add", "thumbnail"}) {
            QStringList words = QString::fromLatin1(command).split(u' ') + QStringList{in(name)};
            if (words.first() == u"thumbnail") words += {u"--output"_s, in("out.png")};
            QElapsedTimer taken;
            taken.start();
            const Ended ended = json(words);
            EXPECT_EQ(ended.status, 1) << command << name;
            EXPECT_EQ(ended.error(), u"Could not read %1."_s.arg(QLatin1StringView(name))) << command;
            EXPECT_EQ(ended.object()["suggestion"_L1], u"Try a PNG, TIFF or JPEG."_s) << name;
            EXPECT_LT(taken.elapsed(), 5000) << command << name;
        }
    }
    EXPECT_FALSE(std::filesystem::exists(m_folder / "out.png"));
}

TEST_F(IntakeTest, NamesThatAreNoTextAreShownWithAReplacement) {
    picture("plain.png");
    std::filesystem::rename(m_folder / "plain.png", m_folder / "a\xff.png");
    const QString script = u"exec \"$0\" --json intake \"$(printf 'a\\377.png')\""_s;
    const Ended ended = start(u"sh"_s, {u"-c"_s, script, program()});
    EXPECT_EQ(ended.status, 0) << ended.err.toStdString();
    EXPECT_EQ(ended.object()["name"_L1], u"a�"_s);
}

TEST_F(IntakeTest, MakesTheTilesPicture) {
    const QString wide = picture("wide.png", Qt::blue, {880, 440});
    const Ended ended = json({u"thumbnail"_s, wide, u"--output"_s, in("tile.png")});
    EXPECT_EQ(ended.object(), facts(R"({"pixelWidth":220,"pixelHeight":110})"));
    EXPECT_EQ(QImage(in("tile.png")).size(), QSize(220, 110));
}

} // namespace

} // namespace quillary::test
