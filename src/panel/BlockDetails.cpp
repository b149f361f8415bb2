#include "panel/BlockDetails.h"

#include "base/FileUrl.h"
#include "base/Text.h"
#include "base/Translation.h"
#include "blocks/ArrangementFailure.h"

#include <algorithm>

namespace quillary {

namespace {

constexpr std::size_t mostBars = 32; ///< more than any tile shows

QStringList namesOf(const BlockHealth& health, BlockHealth::State state) {
    QStringList names;
    for (const auto& media : health.media)
        if (media.state == state && !names.contains(media.name)) names.append(media.name);
    return names;
}

} // namespace

BlockDetails BlockDetails::of(const Arrangement& block, const BlockHealth* health) {
    const auto& summary = block.summary;
    BlockDetails details;
    const auto layerCount = std::ssize(summary.layers);
    details.subtitle = translate("Blocks", "%n layer(s)", nullptr, layerCount);
    if (summary.seconds > 0)
        details.subtitle += translate("Blocks", " · %1s", "seconds").arg(summary.seconds, 0, 'f', 1);
    details.usesGlidemark = summary.usesGlidemark;
    if (const auto poster = block.posterURL()) {
        details.poster = QString::fromLatin1(fileUrl(*poster));
        details.posterStamp = QString::number(block.posterStamp->time_since_epoch().count());
    }
    std::vector<std::pair<int, int>> layers;
    layers.reserve(summary.layers.size());
    for (const auto& layer : summary.layers) layers.emplace_back(layer.lane, static_cast<int>(layer.kind));
    std::ranges::stable_sort(layers, std::greater(), &std::pair<int, int>::first);
    if (layers.size() > mostBars) layers.resize(mostBars);
    for (const auto& [lane, kind] : layers) details.bars.append(kind);
    if (!health) return details;
    const auto missing = health->count(BlockHealth::State::missing);
    const auto moved = health->count(BlockHealth::State::moved);
    const auto incomplete = health->count(BlockHealth::State::incomplete);
    details.isIncomplete = missing + incomplete > 0;
    if (missing > 0) details.problemFiles = ArrangementFailure::missing(namesOf(*health, BlockHealth::State::missing));
    if (missing > 0) {
        details.problem = translate("Blocks", "%n missing", nullptr, missing);
    } else if (incomplete > 0) {
        details.problem = translate("Blocks", "%n incomplete", nullptr, incomplete);
        details.problemFiles = namesOf(*health, BlockHealth::State::incomplete).join(QStringLiteral(", "));
    } else if (moved > 0) {
        details.problem = translate("Blocks", "%n moved", nullptr, moved);
        details.problemFiles = namesOf(*health, BlockHealth::State::moved).join(QStringLiteral(", "));
    }
    return details;
}

} // namespace quillary
