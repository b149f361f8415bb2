#include "platform/FileAttributes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/xattr.h>

using namespace quillary::platform;
using namespace quillary::test;
namespace fs = std::filesystem;

TEST(FileAttributesTest, areKeptUnderTheUsersPrefix) {
    const TemporaryFolder folder;
    const fs::path file = folder / "a \xff.png";
    writeFile(file, "x");
    for (const std::string& value :
         {std::string("svg"), std::string(), std::string(3000, 'v'), std::string("\0\xfe", 2)}) {
        EXPECT_TRUE(setAttribute(file, "com.tamsel.quillary.source", value));
        EXPECT_EQ(attribute(file, "com.tamsel.quillary.source"), value);
    }
    EXPECT_GE(getxattr(file.c_str(), "user.com.tamsel.quillary.source", nullptr, 0), 0);
    removeAttribute(file, "com.tamsel.quillary.source");
    EXPECT_EQ(attribute(file, "com.tamsel.quillary.source"), std::nullopt);
    setAttribute(file, "com.apple.quarantine", "0081;");
    clearQuarantine(file);
    EXPECT_EQ(attribute(file, "com.apple.quarantine"), std::nullopt);
    EXPECT_EQ(attribute(folder / "missing", "x"), std::nullopt);
    EXPECT_FALSE(setAttribute(folder / "missing", "x", "y"));
}
