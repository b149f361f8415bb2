#pragma once

#include "base/FileUrl.h"
#include "blocks/ArrangementStore.h"
#include "blocks/BlockFiles.h"
#include "blocks/BlockSummaries.h"
#include "library/LibraryFixture.h"
#include "platform/FileAttributes.h"
#include "samples/Clips.h"

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace quillary {
inline void PrintTo(const ArrangementFailure& failure, std::ostream* out) {
    *out << failure.description().toStdString();
}
} // namespace quillary

namespace quillary::test {

using namespace Qt::StringLiterals;

/// A store over a library of its own, and a folder with the media that an editor would refer to.
class BlocksTest : public LibraryTest {
protected:
    /// A media file of the editor's.
    fs::path media(const std::string& name, std::string_view bytes = "media") const {
        return writeFile(folder / "media" / name, bytes);
    }
    ClipAsset asset(const std::string& name, const QByteArray& uid = "A1B2C3D4E5F60718293A4B5C6D7E8F90") const {
        return {.uid = uid, .file = media(name)};
    }

    std::expected<Arrangement, ArrangementFailure> save(const QByteArray& xml, std::optional<QString> name = {},
                                                        std::optional<QString> collection = {}) {
        return store.save(xml, name, collection);
    }

    /// Where a document's references lead, in its order; what is no file shows as the reference itself.
    static std::vector<fs::path> references(const QByteArray& xml) {
        std::vector<fs::path> files;
        const auto document = FCPXMLDocument::parse(xml);
        EXPECT_TRUE(document) << xml.toStdString();
        if (!document) return files;
        for (const auto& reference : document->media()) {
            EXPECT_FALSE(reference.holder.firstElement("bookmark"));
            files.push_back(
                reference.file().value_or(reference.holder.attribute("src").value_or("none").toStdString()));
        }
        return files;
    }
    static std::vector<fs::path> referencesOf(const fs::path& block) {
        return references(QByteArray::fromStdString(readFile(block)));
    }

    /// The files below a folder.
    static std::set<std::string> filesIn(const fs::path& shelf) {
        auto found = everythingIn(shelf);
        std::erase_if(found, [&](const std::string& path) { return fs::is_directory(shelf / path); });
        return found;
    }
    std::set<std::string> everything() const { return filesIn(root / "Library"); }

    ArrangementStore store{storage};
    const fs::path blocks = root / "Library/Blocks";
    const fs::path videoElements = root / "Library/Videos/Final Cut Elements";
};

} // namespace quillary::test
