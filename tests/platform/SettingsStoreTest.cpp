#include "platform/SettingsStore.h"
#include "support/TemporaryFolder.h"

#include <QStringList>
#include <gtest/gtest.h>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

using namespace quillary::platform;
using namespace quillary::test;
using namespace Qt::StringLiterals;

TEST(SettingsStoreTest, keepsEveryKindOfValueForTheNextProgram) {
    const TemporaryFolder folder;
    const std::pair<QString, QVariant> values[] = {
        {u"recentLimit"_s, 500},
        {u"previewVolume"_s, 0.25},
        {u"openOnLibrary"_s, true},
        {u"blocksLastRootPath"_s, u"/media/Größe, [1]/Quillary"_s},
        {u"rootFolderBookmark"_s, QByteArray("/media/\xff\x00 x", 10)},
        {u"favouritePaths"_s, QStringList{u"Library/Images/a, b.png"_s, u"Recent/\"é\" \\ 東京.png"_s}},
        {u"one"_s, QStringList{u"Library/Images/only.png"_s}},
        {u"none"_s, QStringList()},
    };
    {
        const auto store = settingsIn(folder / "config/quillary.conf");
        EXPECT_FALSE(store->value(u"recentLimit"_s).isValid());
        for (const auto& [key, value] : values) store->setValue(key, value);
    }
    const auto store = settingsIn(folder / "config/quillary.conf");
    for (const auto& [key, value] : values) {
        QVariant read = store->value(key);
        ASSERT_TRUE(key == u"none"_s || read.isValid()) << key.toStdString();
        if (value.typeId() == QMetaType::QStringList)
            EXPECT_EQ(read.toStringList(), value.toStringList());
        else if (value.typeId() == QMetaType::QByteArray)
            EXPECT_EQ(read.toByteArray(), value.toByteArray());
        else
            EXPECT_EQ(read.toString(), value.toString());
    }
    store->remove(u"recentLimit"_s);
    EXPECT_FALSE(settingsIn(folder / "config/quillary.conf")->value(u"recentLimit"_s).isValid());
}

TEST(SettingsStoreTest, everyReadSeesWhatAnotherProgramStoredAMomentAgo) {
    const TemporaryFolder folder;
    int ask[2];
    int answer[2];
    ASSERT_EQ(pipe(ask), 0);
    ASSERT_EQ(pipe(answer), 0);
    // The other program stores values of one length as fast as it is asked to, several within one tick of the clock.
    const pid_t other = fork();
    if (other == 0) {
        close(ask[1]);
        const auto store = settingsIn(folder / "quillary.conf");
        for (char wanted = 0; read(ask[0], &wanted, 1) == 1;) {
            store->setValue(u"key"_s, QString(QLatin1Char(wanted)));
            if (write(answer[1], &wanted, 1) != 1) break;
        }
        _exit(0);
    }
    const auto store = settingsIn(folder / "quillary.conf");
    for (int i = 0; i < 100; ++i) {
        char letter = static_cast<char>('a' + i % 26);
        ASSERT_EQ(write(ask[1], &letter, 1), 1);
        ASSERT_EQ(read(answer[0], &letter, 1), 1);
        ASSERT_EQ(store->value(u"key"_s).toString(), QString(QLatin1Char(letter))) << i;
    }
    for (const int end : {ask[0], ask[1], answer[0], answer[1]}) close(end);
    int status = 0;
    ASSERT_EQ(waitpid(other, &status, 0), other);
}

TEST(SettingsStoreTest, updatesOfManyProgramsAllCount) {
    const TemporaryFolder folder;
    constexpr int programs = 4;
    constexpr int each = 25;
    for (int p = 0; p < programs; ++p) {
        if (fork() != 0) continue;
        const auto store = settingsIn(folder / "quillary.conf");
        for (int i = 0; i < each; ++i)
            store->update(u"favouritePaths"_s, [&](const QVariant& before) -> QVariant {
                return before.toStringList() << QString::number(p * each + i);
            });
        _exit(0);
    }
    for (int p = 0; p < programs; ++p) ASSERT_GT(wait(nullptr), 0);
    const QStringList all = settingsIn(folder / "quillary.conf")->value(u"favouritePaths"_s).toStringList();
    EXPECT_EQ(QSet<QString>(all.begin(), all.end()).size(), programs * each);
}

TEST(SettingsStoreTest, whatCannotBeStoredLastsForTheRun) {
    const TemporaryFolder folder;
    writeFile(folder / "file", "in the way");
    const auto store = settingsIn(folder / "file/quillary.conf");
    store->setValue(u"recentLimit"_s, 7);
    EXPECT_EQ(store->value(u"recentLimit"_s).toInt(), 7);
}
