#include "library/AppSettings.h"
#include "library/StorageError.h"
#include "support/FakeSettingsStore.h"

#include <gtest/gtest.h>

using namespace quillary;
using namespace quillary::test;
using namespace Qt::StringLiterals;

TEST(AppSettingsTest, readings) {
    const struct {
        QVariant stored;
        int recentLimit;
        int vectorLongEdge;
        double previewVolume;
    } cases[] = {
        {{}, 0, 4096, 0.7},         {-5, 0, 256, 0.0},         {100, 100, 256, 1.0},
        {20000, 20000, 8192, 1.0},  {u"512"_s, 512, 512, 1.0}, {1.5, 2, 256, 1.0},
        {u"0.25"_s, 0, 4096, 0.25}, {u"many"_s, 0, 4096, 0.7}, {qlonglong(1) << 40, INT_MAX, 8192, 1.0},
        {u"nan"_s, 0, 4096, 0.7},
    };
    for (const auto& [stored, recentLimit, vectorLongEdge, previewVolume] : cases) {
        FakeSettingsStore store;
        if (stored.isValid())
            for (const QString& key :
                 {SettingsKey::recentLimit, SettingsKey::vectorLongEdge, SettingsKey::previewVolume})
                store.setValue(key, stored);
        const AppSettings settings(store);
        EXPECT_EQ(settings.recentLimit(), recentLimit) << stored.toString().toStdString();
        EXPECT_EQ(settings.vectorLongEdge(), vectorLongEdge) << stored.toString().toStdString();
        EXPECT_DOUBLE_EQ(settings.previewVolume(), previewVolume) << stored.toString().toStdString();
    }
}

TEST(AppSettingsTest, switchesAreOffUntilStored) {
    FakeSettingsStore store;
    const AppSettings settings(store);
    EXPECT_FALSE(settings.openOnLibrary() || settings.favouritesOnly());
    store.setValue(u"openOnLibrary"_s, u"true"_s);
    store.setValue(u"favouritesOnly"_s, true);
    EXPECT_TRUE(settings.openOnLibrary() && settings.favouritesOnly());
}

TEST(StorageErrorTest, descriptions) {
    const std::pair<StorageError, QString> cases[] = {
        {StorageError::couldNotWrite("/a/b/Logo 2.png", u"No space left on device"_s),
         u"Could not write Logo 2.png: No space left on device"_s},
        {StorageError::noRoot(), u"Could not open the Quillary folder."_s},
        {StorageError::couldNotEncodePNG(), u"Could not encode that image as PNG."_s},
        {StorageError::platform(u"Permission denied"_s), u"Permission denied"_s},
    };
    for (const auto& [error, text] : cases) EXPECT_EQ(error.description(), text);
}
