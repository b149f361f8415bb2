#pragma once

#include "cutout/BackgroundRemovalError.h"
#include "cutout/SubjectMasker.h"

#include <QImage>
#include <expected>
#include <filesystem>
#include <stop_token>

namespace quillary {

/// Cuts the subject out of a photograph. Stateless; any thread.
namespace BackgroundRemover {

struct Result {
    QImage image; ///< the size of the input, Format_RGBA8888_Premultiplied
    QString note; ///< for the user: why the model was passed over; usually empty
};

/// With the model of the user's choice, and by image processing when `model` is empty or of no use (then `note` tells
/// why). `noImage` for a picture without pixels, `noSubjectFound` where nothing stands out, else `failed`.
std::expected<Result, BackgroundRemovalError> remove(const QImage& image, const std::filesystem::path& model = {},
                                                     std::stop_token stop = {});

/// With a given masker.
std::expected<QImage, BackgroundRemovalError> remove(const QImage& image, SubjectMasker& masker,
                                                     std::stop_token stop = {});

} // namespace BackgroundRemover

} // namespace quillary
