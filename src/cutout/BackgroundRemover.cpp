#include "cutout/BackgroundRemover.h"

#include "base/Translation.h"
#include "base/Try.h"
#include "cutout/RowBands.h"
#include "cutout/matte/TileFilter.h"

namespace quillary::BackgroundRemover {

namespace {

constexpr int bandRows = 64;
constexpr auto working = QImage::Format_RGBA8888_Premultiplied;

/// Blends the picture with nothing by the mask.
std::expected<QImage, BackgroundRemovalError> masked(const QImage& image, const QImage& mask,
                                                     const std::stop_token& stop) {
    if (mask.size() != image.size() || mask.format() != QImage::Format_Grayscale8)
        return std::unexpected(BackgroundRemovalError::failed(translate("Cutout", "Could not apply the mask.")));
    QImage result = image.convertToFormat(working);
    if (result.isNull())
        return std::unexpected(BackgroundRemovalError::failed(translate("Cutout", "Could not render the cutout.")));
    uchar* const pixels = result.bits();
    const qsizetype stride = result.bytesPerLine();
    const int width = result.width();
    cutout::forRowBands(result.height(), bandRows, stop, [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            auto* const row = reinterpret_cast<std::uint32_t*>(pixels + y * stride);
            cutout::TileFilter::multiply(row, row, mask.constScanLine(y), width);
        }
    });
    return result;
}

std::expected<std::unique_ptr<SubjectMasker>, BackgroundRemovalError> classicalMasker() {
    auto masker = classicalSubjectMasker();
    if (!masker) return std::unexpected(BackgroundRemovalError::failed(masker.error()));
    return std::move(*masker);
}

} // namespace

std::expected<QImage, BackgroundRemovalError> remove(const QImage& image, SubjectMasker& masker, std::stop_token stop) {
    if (image.isNull()) return std::unexpected(BackgroundRemovalError::noImage());
    auto mask = masker.mask(image, stop);
    if (stop.stop_requested()) return std::unexpected(BackgroundRemovalError::stopped());
    if (!mask) return std::unexpected(BackgroundRemovalError::failed(mask.error()));
    if (!*mask) return std::unexpected(BackgroundRemovalError::noSubjectFound());
    return masked(image, **mask, stop);
}

std::expected<Result, BackgroundRemovalError> remove(const QImage& image, const std::filesystem::path& model,
                                                     std::stop_token stop) {
    if (image.isNull()) return std::unexpected(BackgroundRemovalError::noImage());
    QString note;
    if (!model.empty()) {
        auto masker = modelSubjectMasker(model);
        if (masker) {
            auto result = remove(image, **masker, stop);
            if (result) return Result{std::move(*result), {}};
            if (result.error().kind != BackgroundRemovalError::Kind::failed || stop.stop_requested())
                return std::unexpected(result.error());
            note = result.error().message;
        } else {
            note = masker.error();
        }
    }
    const auto masker = TRY(classicalMasker());
    return Result{TRY(remove(image, *masker, stop)), note};
}

} // namespace quillary::BackgroundRemover
