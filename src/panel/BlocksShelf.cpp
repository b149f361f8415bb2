#include "panel/BlocksShelf.h"

#include "blocks/ArrangementStore.h"

#include <array>
#include <chrono>

namespace quillary {

using namespace std::chrono_literals;
using namespace std::string_view_literals;

namespace {

constexpr std::array documents{"fcpxml"sv};

template <typename Value>
std::expected<Value, QString> described(std::expected<Value, ArrangementStore::Failure> result) {
    if (!result) return std::unexpected(result.error().description());
    if constexpr (std::is_void_v<Value>)
        return {};
    else
        return *std::move(result);
}

} // namespace

BlocksShelf::BlocksShelf(const Services& with, QObject* parent)
    : Shelf(with, std::make_shared<ShelfListing>(Storage::blocksFolder(), documents), parent) {
    m_noteTask.setSingleShot(true);
    m_noteTask.setTimerType(Qt::PreciseTimer);
    m_noteTask.setInterval(6s);
    connect(&m_noteTask, &QTimer::timeout, this, [this] { setNote({}); });
}

void BlocksShelf::setSelectedBlock(std::optional<std::filesystem::path> url) {
    if (m_selectedBlock == url) return;
    m_selectedBlock = std::move(url);
    Q_EMIT selectedBlockChanged();
}

void BlocksShelf::setNote(std::optional<QString> text) {
    text ? m_noteTask.start() : m_noteTask.stop();
    Shelf::setNote(std::move(text));
}

Shelf::FileVerbs BlocksShelf::fileVerbs() const {
    const auto store = std::make_shared<ArrangementStore>(storage());
    return {
        .rename = [store](const std::filesystem::path& block, const QString& name) -> Moved {
            return described(store->rename(block, name));
        },
        .move = [store](const std::filesystem::path& block, const std::optional<QString>& collection) -> Moved {
            return described(store->move(block, collection));
        },
        .remove = [store](const std::filesystem::path& block) { return described(store->remove(block)); },
        .createCollection = [store](const QString& path) { return store->createCollection(path); },
    };
}

void BlocksShelf::relocated(std::span<const ShelfSelection::Relocation> relocations) {
    for (const auto& [from, to] : relocations)
        if (m_selectedBlock == from) setSelectedBlock(to);
}

} // namespace quillary
