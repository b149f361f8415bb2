// Exports of a 25 MB clip against parsing it once, and a look at the media of 1,000 blocks.
#include "ClipLibrary.h"
#include "PlainXml.h"
#include "blocks/BlockChecks.h"
#include "blocks/BlockExport.h"
#include "support/Rounds.h"

using namespace quillary;
using namespace quillary::test;
namespace fs = std::filesystem;

namespace {

constexpr int blocks = 1'000;
constexpr int assetsPerBlock = 10;

} // namespace

int main(int argc, char** argv) {
    benchmark::ClipLibrary library;
    ArrangementStore& store = library.store;
    const QByteArray xml = benchmark::largeClip(library.assets, library.media());
    const auto large = store.save(xml, {}, {});
    benchmark::require(large.has_value(), "cannot save");

    const auto write = [&](BlockExport::Format format) {
        const auto written = BlockExport::write(
            store,
            {.block = large->url, .format = format, .output = library.folder / ("out." + std::to_string(int(format)))});
        benchmark::require(written.has_value(), "cannot export");
    };
    benchmark::Rounds exports("export, 12,000 assets", benchmark::Rounds::options(argc, argv));
    exports.add("libxml2 parse, XPath, serialise", [&] {
        const benchmark::PlainXml plain(xml);
        benchmark::require(plain.found("//asset") == library.assets && plain.serialized() > 0, "not parsed");
    });
    exports.add("FCPXML 1.10", [&] { write(BlockExport::Format::fcpxml110); });
    exports.add("OpenTimelineIO", [&] { write(BlockExport::Format::otio); });
    exports.print();
    benchmark::require(store.remove(large->url).has_value(), "cannot remove");

    std::vector<fs::path> files;
    const QByteArray small = benchmark::largeClip(assetsPerBlock, library.media());
    for (int n = 0; n < blocks; ++n) {
        const auto block = store.save(small, QString::number(n), {});
        benchmark::require(block.has_value(), "cannot save");
        files.push_back(block->url);
    }
    const fs::path root = *library.storage.root();
    BlockChecks kept;
    const auto look = [&](BlockChecks& checks) {
        std::size_t there = 0;
        for (const auto& checked : checks.check(root, files))
            if (checked) there += static_cast<std::size_t>(checked->count(BlockHealth::State::present));
        benchmark::require(there == std::size_t{blocks} * assetsPerBlock, "media are missing");
    };
    look(kept);
    benchmark::Rounds checks("check 1,000 blocks", benchmark::Rounds::options(argc, argv));
    checks.add("read and parse each once", [&] {
        for (const fs::path& file : files) {
            const std::string text = readFile(file);
            const benchmark::PlainXml plain(QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size())));
        }
    });
    checks.add("first check", [&] {
        BlockChecks fresh;
        look(fresh);
    });
    checks.add("next check", [&] { look(kept); });
    checks.print();
    benchmark::require(kept.documentsRead() == blocks, "unchanged blocks were read again");
    return 0;
}
