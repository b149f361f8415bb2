#include "desktop/OtherProgram.h"
#include "platform/Clipboard.h"
#include "platform/Pasteboard.h"
#include "support/EventLoop.h"
#include "support/TemporaryFolder.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QRasterWindow>
#include <future>
#include <gtest/gtest.h>

using namespace quillary;
using namespace quillary::test;

namespace {

/// A window in front: only the program that has the keyboard is told what is on the clipboard.
class WaylandClipboard : public testing::Test {
protected:
    WaylandClipboard() {
        m_window.resize(200, 200);
        m_window.show();
    }

    std::unique_ptr<OtherProgram> copy(const QString& type, const QByteArray& bytes) {
        const auto file = m_folder / "copied";
        writeFile(file, bytes);
        return std::make_unique<OtherProgram>(
            "sh", QStringList{QStringLiteral("-c"), QStringLiteral("exec wl-copy --foreground --type \"$0\" < \"$1\""),
                              type, QString::fromStdString(file.string())});
    }
    std::shared_ptr<platform::Pasteboard> contentsOnceOffered(const QString& type) {
        std::shared_ptr<platform::Pasteboard> found;
        const bool offered = comesTrue([&] {
            found = m_clipboard->contents();
            return found->types().contains(type) && QGuiApplication::focusWindow() == &m_window;
        });
        EXPECT_TRUE(offered) << qPrintable(found->types().join(u' '));
        return found;
    }
    /// As a worker would have it, while the main thread serves its events.
    static std::optional<QByteArray> readOnWorker(const std::shared_ptr<platform::Pasteboard>& pasteboard,
                                                  const QString& type) {
        auto reading = std::async(std::launch::async, [=] { return pasteboard->data(type); });
        comesTrue([&] { return reading.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
        return reading.get();
    }

    TemporaryFolder m_folder;
    QRasterWindow m_window;
    std::unique_ptr<platform::Clipboard> m_clipboard = platform::systemClipboard();
};

const QString png = QStringLiteral("image/png");

} // namespace

TEST_F(WaylandClipboard, ReadsBytesAsTheyAre) {
    struct Case {
        QString type;
        QByteArray bytes;
    };
    const Case cases[] = {{png, QByteArray(9 * 1000 * 1000, '\x89')},
                          {QStringLiteral("com.apple.finalcutpro.xml.v1-14"), "\xFF\x00<fcpxml"},
                          {QStringLiteral("text/uri-list"), "file:///a%20b%FF.png\r\n"}};
    for (const auto& [type, bytes] : cases) {
        SCOPED_TRACE(qPrintable(type));
        const auto owner = copy(type, bytes);
        const auto pasteboard = contentsOnceOffered(type);
        EXPECT_EQ(pasteboard->data(type), bytes);
        EXPECT_EQ(readOnWorker(pasteboard, type), bytes);
        EXPECT_FALSE(pasteboard->data(QStringLiteral("image/tiff")));
    }
}

TEST_F(WaylandClipboard, ReadsText) {
    const QByteArray words = "<svg>M\xC3\xBCnchen</svg>";
    const auto owner = copy(QStringLiteral("text/plain;charset=utf-8"), words);
    EXPECT_EQ(contentsOnceOffered(QStringLiteral("text/plain;charset=utf-8"))->string(), QString::fromUtf8(words));
}

TEST_F(WaylandClipboard, GivesUpOnAnOwnerThatDoesNotAnswer) {
    const auto owner = copy(QStringLiteral("text/plain"), "never read");
    const auto pasteboard = contentsOnceOffered(QStringLiteral("text/plain"));
    owner->suspend();
    QElapsedTimer watch;
    watch.start();
    for (const QString& type : pasteboard->types()) EXPECT_FALSE(readOnWorker(pasteboard, type));
    EXPECT_FALSE(pasteboard->string());
    EXPECT_LT(watch.elapsed(), 3000);
}

TEST_F(WaylandClipboard, ReadsNothingFromAClipboardThatHasChanged) {
    const auto before = copy(png, "old");
    const auto pasteboard = contentsOnceOffered(png);
    const auto after = copy(QStringLiteral("image/tiff"), "new");
    contentsOnceOffered(QStringLiteral("image/tiff"));
    EXPECT_FALSE(pasteboard->data(png));
}
