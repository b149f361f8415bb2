#include "library/AppSettings.h"
#include "support/FakeSettingsStore.h"

#include <gtest/gtest.h>

using namespace quillary;
using namespace quillary::test;
using namespace Qt::StringLiterals;

TEST(AppSettingsTest, TheEditorHasANameOfOneLine) {
    const std::pair<QVariant, QString> cases[] = {{{}, u"Final Cut"_s},
                                                  {u""_s, u"Final Cut"_s},
                                                  {u" \n "_s, u"Final Cut"_s},
                                                  {u" DaVinci\nResolve "_s, u"DaVinci Resolve"_s},
                                                  {QString(99, u'x'), QString(40, u'x')}};
    for (const auto& [stored, name] : cases) {
        FakeSettingsStore store;
        store.setValue(SettingsKey::editorName, stored);
        EXPECT_EQ(AppSettings(store).editorName(), name);
    }
}

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
