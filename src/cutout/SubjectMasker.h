#pragma once

#include <QImage>
#include <QString>
#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <stop_token>

namespace quillary {

/// Finds the subject of a picture: the seam behind which a platform's own service, a model or plain image processing
/// may stand. Any thread, one call at a time.
class SubjectMasker {
public:
    virtual ~SubjectMasker() = default;

    /// A soft mask (Grayscale8, of the picture's size; 0 background … 255 subject), or none when there is no subject.
    /// The error is a text for the user: this masker cannot work on this picture, or not at all. After a stop request
    /// the answer may be any of these.
    virtual std::expected<std::optional<QImage>, QString> mask(const QImage& image, std::stop_token stop) = 0;
};

/// Image processing that always works: what differs from all that hangs together with the border, cut out by its
/// colours and fitted to the picture's edges. Loads its libraries when first asked for, some 20 ms. The error, a text
/// for the user, tells that they cannot be loaded.
std::expected<std::unique_ptr<SubjectMasker>, QString> classicalSubjectMasker();

/// A segmentation network in an ONNX file: one RGB input of 320 × 320 pixels, normalised by the usual means and
/// deviations (0.485, 0.456, 0.406; 0.229, 0.224, 0.225), one plane of coverage or logits as its first output. Reads
/// the whole file. The error, a text for the user, tells why the file is of no use.
std::expected<std::unique_ptr<SubjectMasker>, QString> modelSubjectMasker(const std::filesystem::path& file);

} // namespace quillary
