#pragma once

#include "base/BatchProgress.h"
#include "cli/Output.h"

#include <thread>

namespace quillary::cli {

/// Draws how far a batch is on the terminal, from a thread of its own, and wipes its line when it goes. Draws nothing
/// where nobody watches, nor for work that is done at once.
class ProgressBar {
public:
    /// `progress` outlives this object.
    ProgressBar(const BatchProgress& progress, const Output& output);

private:
    std::jthread m_painter;
};

} // namespace quillary::cli
