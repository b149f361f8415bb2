#pragma once

#include "media/AudioDurationCache.h"
#include "values/LibraryItem.h"

#include <vector>

namespace quillary {

enum class SoundOrder { newest, name, shortest, longest };

/// Orders rows of a list of sounds. Equal ones keep their order; sounds of unknown length come last in both orders of
/// length.
void sortSounds(std::vector<quint32>& rows, const LibraryItems& items, SoundOrder order,
                const AudioDurationCache::Durations& durations);

} // namespace quillary
