#include "base/Text.h"
#include "library/LibraryFilter.h"
#include "support/Rounds.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

using namespace quillary;

namespace {

constexpr int nameCount = 100'000;

/// Names of two to six words, one in twelve with letters beyond ASCII.
std::shared_ptr<const LibraryItems> manyItems() {
    constexpr std::array words{"logo",  "final", "v2",     "arrow", "red",    "blue",  "sports",  "lower",
                               "third", "map",   "chart",  "icon",  "badge",  "frame", "texture", "overlay",
                               "hand",  "team",  "client", "shot",  "screen", "drone", "night",   "banner"};
    constexpr std::array foreign{"Größe", "Übersicht", "café", "Ελλάδα", "Москва", "東京", "straße", "résumé"};
    std::mt19937 random(7);
    const auto pick = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    auto items = std::make_shared<LibraryItems>();
    items->reserve(nameCount);
    for (int i = 0; i < nameCount; ++i) {
        std::string name;
        for (int word = 2 + pick(5); word > 0; --word) name += std::string(words[pick(words.size())]) + ' ';
        if (pick(12) == 0) name += std::string(foreign[pick(foreign.size())]) + ' ';
        LibraryItem& item = items->emplace_back();
        item.url = std::filesystem::path("/library/Images") / (name + std::to_string(i) + ".png");
        if (pick(2) == 0) item.collection = QStringLiteral("Logos / Sports");
    }
    return items;
}

std::size_t slowly(const LibraryItems& items, const QString& text) {
    std::size_t count = 0;
    for (const LibraryItem& item : items)
        if (foldedForSearch(shownStem(item.url)).contains(foldedForSearch(text))) ++count;
    return count;
}

} // namespace

/// [--runs N] [--warm N] [--only TEXT]
int main(int argumentCount, char** arguments) {
    const auto items = manyItems();
    const SearchableItems searchable(items);
    benchmark::Rounds rounds("filter 100,000 names", benchmark::Rounds::options(argumentCount, arguments));
    rounds.add(
        "folding every name again", [&] { slowly(*items, QStringLiteral("logo")); }, "what a key press would cost");
    rounds.add("folding once, after a listing", [&] { const SearchableItems folded(items); });
    for (const char* text : {"l", "lo", "logo", "logo fin", "e", "9", "straße", "TOKIO 東", "nowhere"}) {
        const QString wanted = QString::fromUtf8(text);
        if (visibleRows(searchable, {.search = wanted}, {}).size() != slowly(*items, wanted)) {
            std::fprintf(stderr, "wrong rows for %s\n", text);
            return 1;
        }
        rounds.add("typed: " + std::string(text),
                   [&, wanted] { (void)visibleRows(searchable, {.search = wanted}, {}); });
    }
    rounds.add("a collection and a text", [&] {
        (void)visibleRows(
            searchable, {.collection = CollectionFilter::named(QStringLiteral("Logos")), .search = QStringLiteral("o")},
            {});
    });
    const FavoriteFiles favorites({QStringLiteral("Images/one.png")}, "/library");
    rounds.add("favourites only", [&] {
        (void)visibleRows(searchable, {.favoritesOnly = true},
                          [&](const LibraryItem& item) { return favorites.contains(item.url); });
    });
    rounds.print();
}
