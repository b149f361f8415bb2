#include "desktop/OtherProgram.h"
#include "platform/Clipboard.h"
#include "platform/Pasteboard.h"
#include "support/TemporaryFolder.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMimeData>
#include <future>
#include <gtest/gtest.h>
#include <random>

using namespace quillary;
using namespace quillary::test;

namespace {

QByteArray randomBytes(qsizetype size) {
    std::mt19937 generator(7);
    QByteArray bytes(size, Qt::Uninitialized);
    std::ranges::generate(bytes, [&] { return static_cast<char>(generator()); });
    return bytes;
}

class X11Clipboard : public testing::Test {
protected:
    QString file(const char* name, const QByteArray& bytes) const {
        writeFile(m_folder / name, bytes);
        return QString::fromStdString((m_folder / name).string());
    }
    static QStringList offer(std::initializer_list<std::pair<QString, QString>> data, QStringList options = {}) {
        for (const auto& [type, name] : data) options << QStringLiteral("--data") << type + u'=' + name;
        return options;
    }
    std::shared_ptr<platform::Pasteboard> contents() { return m_clipboard->contents(); }

    TemporaryFolder m_folder;
    std::unique_ptr<platform::Clipboard> m_clipboard = platform::systemClipboard();
};

const QString png = QStringLiteral("image/png");

/// Asks as the panel does, for every type in turn, and tells how long all of it took.
qint64 millisecondsForWholeRead(platform::Pasteboard& pasteboard) {
    QElapsedTimer watch;
    watch.start();
    for (const QString& type : pasteboard.types()) EXPECT_FALSE(pasteboard.data(type)) << qPrintable(type);
    for (const char* type : {"image/png", "image/tiff", "image/jpeg", "text/plain"})
        EXPECT_FALSE(pasteboard.data(QString::fromLatin1(type))) << type;
    EXPECT_FALSE(pasteboard.string());
    EXPECT_TRUE(pasteboard.urls().isEmpty());
    return watch.elapsed();
}

} // namespace

// First: the toolkit cannot take the clipboard again from an owner that came after its last event.
TEST_F(X11Clipboard, ReadsOnAWorkerWhatThisProgramOwns) {
    const QByteArray large = randomBytes(3 * 1000 * 1000);
    auto data = std::make_unique<QMimeData>();
    data->setData(png, large);
    QGuiApplication::clipboard()->setMimeData(data.release());
    auto reading = std::async(std::launch::async, [pasteboard = contents()] { return pasteboard->data(png); });
    while (reading.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_EQ(reading.get(), large);
    QGuiApplication::clipboard()->clear();
}

TEST_F(X11Clipboard, IsEmptyWithoutAnOwner) {
    const auto pasteboard = contents();
    EXPECT_TRUE(pasteboard->types().isEmpty());
    EXPECT_LT(millisecondsForWholeRead(*pasteboard), 500);
}

TEST_F(X11Clipboard, ReadsOnlyWhatIsOffered) {
    const QByteArray picture = randomBytes(5000);
    // xclip answers every question with what it has, whatever type is asked for.
    OtherProgram owner("xclip", {QStringLiteral("-quiet"), QStringLiteral("-selection"), QStringLiteral("clipboard"),
                                 QStringLiteral("-t"), png, QStringLiteral("-i"), file("picture", picture)});
    std::shared_ptr<platform::Pasteboard> pasteboard;
    for (int attempt = 0; attempt < 100 && (!pasteboard || pasteboard->types().isEmpty()); ++attempt) {
        pasteboard = contents();
        if (pasteboard->types().isEmpty()) std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_EQ(pasteboard->types(), QStringList{png});
    EXPECT_EQ(pasteboard->data(png), picture);
    EXPECT_EQ(pasteboard->data(QStringLiteral("public.png")), picture);
    EXPECT_FALSE(pasteboard->data(QStringLiteral("image/tiff")));
}

TEST_F(X11Clipboard, KeepsTypesInTheirOrderAndBytesAsTheyAre) {
    const QString clip = QStringLiteral("com.apple.finalcutpro.xml.v1-14");
    const QString text = QStringLiteral("text/plain;charset=utf-8");
    const QByteArray words = "M\xC3\xBCnchen \xE2\x80\x94 ok";
    const QByteArray notText = "\xFF\xFE\x01<fcpxml";
    const QByteArray large = randomBytes(10 * 1000 * 1000 + 3); // comes in pieces
    OtherProgram owner(
        CLIPBOARD_OWNER,
        offer({{clip, file("clip", notText)}, {png, file("picture", large)}, {text, file("words", words)}}));
    ASSERT_TRUE(owner.isReady());
    const auto pasteboard = contents();
    EXPECT_EQ(pasteboard->types().first(3), (QStringList{clip, png, text}));
    EXPECT_FALSE(pasteboard->types().contains(QStringLiteral("TARGETS")));
    EXPECT_EQ(pasteboard->data(clip), notText);
    EXPECT_EQ(pasteboard->data(png), large);
    EXPECT_EQ(pasteboard->string(), QString::fromUtf8(words));
}

TEST_F(X11Clipboard, GivesUpOnAnOwnerThatDoesNotAnswer) {
    struct Case {
        const char* mode;
        qint64 limit; ///< ms
    };
    for (const Case& each : {Case{"--hang", 3000}, {"--hang-data", 5000}, {"--incr-stall", 4500}}) {
        SCOPED_TRACE(each.mode);
        OtherProgram owner(CLIPBOARD_OWNER, offer({{png, file("picture", "bytes")},
                                                   {QStringLiteral("image/tiff"), file("picture", "bytes")}},
                                                  {QString::fromLatin1(each.mode)}));
        ASSERT_TRUE(owner.isReady());
        EXPECT_LT(millisecondsForWholeRead(*contents()), each.limit);
    }
}

TEST_F(X11Clipboard, FindsNothingOnceTheOwnerIsGone) {
    OtherProgram owner(CLIPBOARD_OWNER, offer({{png, file("picture", "bytes")}}));
    ASSERT_TRUE(owner.isReady());
    const auto pasteboard = contents();
    EXPECT_EQ(pasteboard->types(), QStringList{png});
    owner.stop();
    EXPECT_LT(millisecondsForWholeRead(*pasteboard), 500);
}
