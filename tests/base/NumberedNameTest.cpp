#include "base/NumberedName.h"

#include <gtest/gtest.h>

namespace quillary {

TEST(NumberedName, NumbersBeforeTheExtension) {
    const std::pair<const char*, const char*> seconds[] = {
        {"Logo.png", "Logo 2.png"},
        {"archive.tar.gz", "archive.tar 2.gz"},
        {"README", "README 2"},
        {".hidden", ".hidden 2"},
    };
    for (const auto& [name, second] : seconds) {
        EXPECT_EQ(NumberedName::ofFileName(name).at(1), name);
        EXPECT_EQ(NumberedName::ofFileName(name).at(2), second);
    }
    EXPECT_EQ(NumberedName("Logo", "png").at(13), "Logo 13.png");
}

TEST(NumberedName, FitsIntoAFileNameWithoutCuttingACharacter) {
    std::string umlauts;
    for (int i = 0; i < 150; ++i) umlauts += "ü";
    for (const unsigned attempt : {1U, 2U, 10U, 12345U}) {
        const std::string name = NumberedName(umlauts, "png").at(attempt);
        EXPECT_LE(name.size(), 255U);
        EXPECT_GE(name.size(), 253U);
        EXPECT_TRUE(name.ends_with(".png"));
        EXPECT_EQ(name.find("ü"), 0U);
        const auto tail = name.find_first_not_of("ü");
        EXPECT_EQ(tail % 2, 0U) << "a character was cut in half";
    }
    EXPECT_LE(NumberedName("a", std::string(300, 'x')).at(2).size(), 255U);
}

} // namespace quillary
