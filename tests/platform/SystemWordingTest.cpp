#include "platform/SystemWording.h"

#include <gtest/gtest.h>

namespace quillary::test {

namespace {

TEST(SystemWordingTest, PutsKeysAndTheFileManagerAsThisSystemDoes) {
    const std::pair<const char*, const char*> rows[] = {
        {"⌘V, or drag one in", "Ctrl+V, or drag one in"},
        {"take a screenshot first (⌘⇧4)", "take a screenshot first (Print)"},
        {"move your files with the Finder — see them in the Finder", "move your files with the file manager — see them in the file manager"},
        {"Drag a block onto the timeline, then ⇧⌘G to break it apart", "Drag a block onto the timeline, then ⇧⌘G to break it apart"},
        {"press ⌥G, then ⌘Z to undo the compound.", "press ⌥G, then ⌘Z to undo the compound."},
    };
    for (const auto& [text, here] : rows)
        EXPECT_EQ(platform::inSystemWords(QString::fromUtf8(text)).toStdString(), here);
}

} // namespace

} // namespace quillary::test
