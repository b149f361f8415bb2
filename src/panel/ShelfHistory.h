#pragma once

#include "panel/ShelfChange.h"

#include <deque>
#include <optional>
#include <vector>

namespace quillary {

/// What was done on a shelf in this session, to be taken back and done again. Bounded in steps, in the files that
/// they hold open and in the room that those take: the oldest are forgotten first. A value; no thread of its own.
class ShelfHistory {
public:
    enum class Direction { undo, redo };

    static constexpr std::size_t mostSteps = 100;
    static constexpr int mostKeptFiles = ShelfChanges::mostKeptFiles;

    /// What was done anew; what was undone before it is forgotten.
    void record(ShelfChange change);
    /// Something was done that has no way back, so what lies before it is out of reach.
    void clear();
    /// Takes the next step out; none when there is nothing left.
    std::optional<ShelfChange> take(Direction direction);
    /// The way back of a step that was taken.
    void put(Direction taken, ShelfChange change);

private:
    void bound();

    std::deque<ShelfChange> m_undo; ///< the newest last
    std::vector<ShelfChange> m_redo;
};

} // namespace quillary
