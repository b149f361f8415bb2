#include "panel/ShelfHistory.h"

#include <utility>

namespace quillary {

void ShelfHistory::record(ShelfChange change) {
    m_redo.clear();
    m_undo.push_back(std::move(change));
    bound();
}

void ShelfHistory::clear() {
    m_undo.clear();
    m_redo.clear();
}

std::optional<ShelfChange> ShelfHistory::take(Direction direction) {
    const auto last = [](auto& steps) -> std::optional<ShelfChange> {
        if (steps.empty()) return {};
        ShelfChange step = std::move(steps.back());
        steps.pop_back();
        return step;
    };
    return direction == Direction::undo ? last(m_undo) : last(m_redo);
}

void ShelfHistory::put(Direction taken, ShelfChange change) {
    if (taken == Direction::undo) return m_redo.push_back(std::move(change));
    m_undo.push_back(std::move(change));
    bound();
}

void ShelfHistory::bound() {
    const auto keepsTooMuch = [this] {
        int files = 0;
        std::uint64_t bytes = 0;
        for (const ShelfChange& step : m_undo) {
            files += step.keptFiles;
            bytes += step.keptBytes;
        }
        return files > mostKeptFiles || bytes > ShelfChanges::mostKeptBytes;
    };
    while (m_undo.size() > mostSteps || keepsTooMuch()) m_undo.pop_front();
}

} // namespace quillary
