#include "panel/BlockDetails.h"

#include "base/FileUrl.h"
#include "base/Text.h"

#include <algorithm>

namespace quillary {

BlockDetails BlockDetails::of(const Arrangement& block) {
    const auto& summary = block.summary;
    BlockDetails details;
    details.subtitle = counted(static_cast<qsizetype>(summary.layers.size()), u"layer");
    if (summary.seconds > 0) details.subtitle += QStringLiteral(" · %1s").arg(summary.seconds, 0, 'f', 1);
    details.usesGlidemark = summary.usesGlidemark;
    if (const auto poster = block.posterURL()) {
        details.poster = QString::fromLatin1(fileUrl(*poster));
        details.posterStamp = QString::number(block.posterStamp->time_since_epoch().count());
    }
    std::vector<Arrangement::Layer> layers = summary.layers;
    std::ranges::stable_sort(layers, std::greater(), &Arrangement::Layer::lane);
    for (const auto& layer : layers) details.bars.append(static_cast<int>(layer.kind));
    return details;
}

} // namespace quillary
