#include "imaging/Thumbnail.h"

#include "imaging/BitmapDecoder.h"
#include "imaging/Rasterizer.h"
#include "platform/UniformTypes.h"

namespace quillary::Thumbnail {

QImage load(const std::filesystem::path& url, std::stop_token stop) {
    if (stop.stop_requested()) return {};
    const QString type = platform::contentType(url);
    const bool svg = platform::conforms(type, QStringLiteral("image/svg+xml"));
    if (!svg && !platform::conforms(type, QStringLiteral("application/pdf")))
        return BitmapDecoder::thumbnail(url, longestSide);
    return Rasterizer::draw(url, svg ? Rasterizer::Format::svg : Rasterizer::Format::pdf,
                            {RasterRule::Kind::fit, longestSide}, stop)
        .value_or(QImage());
}

} // namespace quillary::Thumbnail
