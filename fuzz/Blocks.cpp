// Feeds documents to everything that reads them: the summary, the save with its media, the document put on a drag, the
// reduction to a single file, the exports. What the library then holds is checked.
#include "FuzzLibrary.h"
#include "blocks/ArrangementStore.h"
#include "blocks/export/FCPXMLDowngrade.h"
#include "blocks/export/FlatTimeline.h"
#include "blocks/export/OTIOWriter.h"

#include <cmath>
#include <fstream>

using namespace quillary;
using fuzz::require;
namespace fs = std::filesystem;

namespace {

bool liesBelow(const fs::path& file, const fs::path& folder) {
    const fs::path relative = file.lexically_normal().lexically_relative(folder);
    return !relative.empty() && *relative.begin() != "..";
}

fuzz::FuzzLibrary& library() {
    static fuzz::FuzzLibrary only;
    return only;
}

/// Copies pile up; a library without them is as good as new.
void forgetCopies(const fs::path& root) {
    constexpr int often = 200;
    static int runs = 0;
    if (++runs % often != 0) return;
    for (const char* shelf : {"Library/Images", "Library/Videos", "Library/Audio", "Recent"})
        for (const auto& entry : fs::directory_iterator(root / shelf)) fs::remove_all(entry.path());
}

void checkBlock(ArrangementStore& store, const Arrangement& block, QByteArrayView xml) {
    const fs::path root = library().root();
    require(liesBelow(block.url, root / "Library/Blocks"), "a block lies on its shelf");
    const auto stored = FCPXMLDocument::read(block.url);
    require(stored.has_value(), "what is stored can be read");
    require(ArrangementStore::summarize(*stored) == block.summary, "a summary survives storing");
    for (const auto& reference : stored->media()) {
        const auto file = reference.file();
        require(file && fs::is_regular_file(*file), "a block refers to files that are there");
        require(FinalCutElements::holds(*file), "and that are kept for blocks");
        require(!reference.holder.firstElement("bookmark"), "without bookmarks");
    }
    // Files that are missing are found by their UID, among copies that this very save may have added to.
    auto again = store.save(xml, {}, {});
    const auto second = again ? std::optional(again->url) : std::nullopt;
    if (second) again = store.save(xml, {}, {});
    require(!again && again.error().kind == ArrangementFailure::Kind::alreadySaved, "the same clip is stored once");
    if (second) require(store.remove(*second).has_value(), "a block can be deleted");
    const auto dragged = store.xml(block.url);
    require(dragged.has_value(), "a block can be dragged");
    const auto document = FCPXMLDocument::parse(*dragged);
    require(document.has_value(), "what is dragged can be read");
    for (const char* kind : {"asset", "media"})
        for (const xml::Node element : document->elements(kind))
            require(!element.attribute("uid") && !element.attribute("modDate"), "what is dragged is new");
    require(store.remove(block.url).has_value(), "a block can be deleted");
}

void checkExports(const FCPXMLDocument& document, QByteArrayView xml) {
    LeftOut leftOut;
    if (const auto timeline = flattened(document, leftOut)) {
        for (const auto& track : timeline->tracks) {
            Rational end;
            for (const auto& item : track.items) {
                require(item.position >= end && item.duration > Rational(), "items of a track follow each other");
                end = item.end();
            }
        }
        (void)otioJson(*timeline, {});
    }
    auto older = FCPXMLDocument::parse(xml);
    bringToVersion110(*older, leftOut);
    auto again = FCPXMLDocument::parse(*older->serialize());
    require(again.has_value(), "an older document can be read");
    LeftOut nothing;
    bringToVersion110(*again, nothing);
    require(nothing.texts().isEmpty(), "an older document knows nothing newer");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArrayView xml(data, static_cast<qsizetype>(size));
    ArrangementStore store(library().storage);
    const auto document = FCPXMLDocument::parse(xml);
    const auto block = store.save(xml, {}, QStringLiteral("A"));
    require(document || !block, "only documents are stored");
    if (document) {
        require(std::isfinite(ArrangementStore::summarize(*document).seconds), "lengths are numbers");
        if (const auto file = store.singleMediaFile(xml, {}))
            require(fs::is_regular_file(*file), "a single file is there");
        checkExports(*document, xml);
    }
    if (block) {
        require(store.move(block->url, {}).has_value(), "a block can be moved");
        Arrangement moved = *block;
        moved.url = library().root() / "Library/Blocks" / block->url.filename();
        checkBlock(store, moved, xml);
    }
    forgetCopies(library().root());
    return 0;
}
