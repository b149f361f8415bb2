// Listing 2,000 blocks of 100 KB, against parsing each once; and listing them again.
#include "LargeClip.h"
#include "PlainXml.h"
#include "blocks/BlockSummaries.h"
#include "library/ShelfIndex.h"
#include "library/Storage.h"
#include "support/Rounds.h"
#include "support/TemporaryFolder.h"

#include <QFile>
#include <cstdio>
#include <cstdlib>

using namespace quillary;
using namespace quillary::test;
namespace fs = std::filesystem;

namespace {

constexpr int blocks = 2'000;
constexpr int assetsPerBlock = 48;

} // namespace

int main(int argc, char** argv) {
    const TemporaryFolder folder;
    const fs::path root = folder / "Quillary";
    const std::string xml = benchmark::largeClip(assetsPerBlock, folder / "media").toStdString();
    std::vector<fs::path> files;
    for (int n = 0; n < blocks; ++n) {
        files.push_back(root / Storage::blocksFolder() / std::to_string(n % 20) / (std::to_string(n) + ".fcpxml"));
        writeFile(files.back(), xml);
    }
    std::printf("%d blocks of %.0f KB\n", blocks, static_cast<double>(xml.size()) / 1e3);

    ShelfIndex index(root / Storage::blocksFolder(), Storage::blockExtensions, true);
    BlockSummaries summaries;
    const auto refresh = [&] {
        index.refresh();
        return summaries.read(*index.items()).size();
    };
    refresh();
    benchmark::Rounds rounds("list 2,000 blocks", benchmark::Rounds::options(argc, argv));
    rounds.add("read and parse each once", [&] {
        for (const fs::path& path : files) {
            QFile file(path);
            benchmark::require(file.open(QIODevice::ReadOnly), "cannot read");
            const benchmark::PlainXml plain(file.readAll());
        }
    });
    rounds.add("first listing", [&] {
        ShelfIndex fresh(root / Storage::blocksFolder(), Storage::blockExtensions, false);
        fresh.refresh();
        const auto listed = BlockSummaries().read(*fresh.items());
        benchmark::require(listed.size() == blocks && listed.front().summary.layers.size() == 2 * assetsPerBlock,
                           "not listed");
    });
    rounds.add("next refresh", [&] { benchmark::require(refresh() == blocks, "not listed"); });
    rounds.print();
    benchmark::require(summaries.documentsRead() == blocks, "unchanged blocks were read again");
    return 0;
}
