// Saving a clip of 25 MB with 12,000 assets whose media are in the library already, against libxml2 alone; and the
// memory it takes.
#include "ClipLibrary.h"
#include "PlainXml.h"
#include "support/Rounds.h"

#include <cstdio>
#include <cstdlib>
#include <malloc.h>

using namespace quillary;

int main(int argc, char** argv) {
    benchmark::ClipLibrary library;
    ArrangementStore& store = library.store;
    const QByteArray xml = benchmark::largeClip(library.assets, library.media());
    const auto first = store.save(xml, {}, {});
    benchmark::require(first.has_value(), "cannot save");
    std::printf("document: %.1f MB\n", static_cast<double>(xml.size()) / 1e6);

    const auto save = [&] {
        const auto block = store.save(xml, QStringLiteral("Again"), {});
        benchmark::require(block && store.remove(block->url), "cannot save");
    };
    benchmark::Rounds rounds("save, 12,000 assets", benchmark::Rounds::options(argc, argv));
    rounds.add("libxml2 parse, XPath, serialise", [&] {
        const benchmark::PlainXml plain(xml);
        benchmark::require(plain.found("//asset") == library.assets && plain.found("//effect") == 1, "not found");
        benchmark::require(plain.serialized() > 0, "not serialised");
    });
    rounds.add("ArrangementStore::save", save);
    rounds.add("ArrangementStore::xml", [&] { benchmark::require(store.xml(first->url).has_value(), "cannot drag"); });
    rounds.print();

    malloc_trim(0);
    const auto memory = benchmark::peakMemoryOf(save);
    std::printf("peak memory of a save: %.1f times the document\n",
                (memory.peak - memory.before) / static_cast<double>(xml.size()));
    return 0;
}
