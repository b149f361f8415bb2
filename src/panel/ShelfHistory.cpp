#include "panel/ShelfHistory.h"

#include <numeric>
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
    const auto kept = [this] {
        return std::accumulate(m_undo.begin(), m_undo.end(), 0,
                               [](int sum, const ShelfChange& step) { return sum + step.keptFiles; });
    };
    while (m_undo.size() > mostSteps || (kept() > mostKeptFiles && !m_undo.empty())) m_undo.pop_front();
}

} // namespace quillary
