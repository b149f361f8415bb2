#include "base/Translation.h"

#include <QTranslator>
#include <gtest/gtest.h>

namespace quillary {

namespace {

/// English again afterwards, as every test program speaks it.
class SpeakingGerman {
public:
    SpeakingGerman() { installLanguage(QLocale(QStringLiteral("de_AT"))); }
    ~SpeakingGerman() {
        for (auto* texts : qApp->findChildren<QTranslator*>())
            if (texts->language().startsWith(u"de")) delete texts;
    }
};

TEST(TranslationTest, ANumberDecidesTheForm) {
    const struct {
        const char* context;
        const char* text;
        int number;
        const char* english;
        const char* german;
    } cases[] = {
        {"AliasBanner", "Allow %n folder(s)", 1, "Allow folder", "Ordner erlauben"},
        {"AliasBanner", "Allow %n folder(s)", 3, "Allow 3 folders", "3 Ordner erlauben"},
        {"ContextBar", "%n match(es)", 0, "0 matches", "0 Treffer"},
        {"Blocks", "Saved %n block(s)", 1, "Saved 1 block", "1 Block gesichert"},
        {"Blocks", "%n layer(s)", 1000, "1000 layers", "1000 Ebenen"},
        {"SelectionBar", "%n selected", 1, "1 selected", "1 ausgewählt"},
    };
    for (const auto& [context, text, number, english, german] : cases)
        EXPECT_EQ(translate(context, text, nullptr, number), QString::fromUtf8(english)) << text;
    const SpeakingGerman here;
    for (const auto& [context, text, number, english, german] : cases)
        EXPECT_EQ(translate(context, text, nullptr, number), QString::fromUtf8(german)) << text;
}

TEST(TranslationTest, WhatALanguageLacksIsEnglish) {
    const char* text = "Nobody translated this";
    {
        const SpeakingGerman here;
        EXPECT_EQ(translate("Panel", "Nothing readable in that drop."), QStringLiteral("Darin war nichts Lesbares."));
        EXPECT_EQ(translate("Panel", text), QString::fromUtf8(text));
    }
    EXPECT_EQ(translate("Panel", "Nothing readable in that drop."), QStringLiteral("Nothing readable in that drop."));
    installLanguage(QLocale(QLocale::Icelandic));
    EXPECT_EQ(translate("Blocks", "Saved %n block(s)", nullptr, 2), QStringLiteral("Saved 2 blocks"));
}

} // namespace

} // namespace quillary
