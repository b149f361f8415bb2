#pragma once

#include "cutout/BackgroundRemovalError.h"

#include <QImage>
#include <QString>
#include <expected>
#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>

namespace quillary {

/// Cutting a picture out with a chosen method or with the one that suits it. Stateless; any thread.
namespace Cutout {

enum class Method { solid, subject };

/// What users call it: "Flat background", "Subject".
QString label(Method method);

struct Result {
    QImage image; ///< the size of the input, Format_RGBA8888_Premultiplied, fit to be drawn
    Method method;
    std::optional<double> removedFraction; ///< of the flat background, 0 … 1; none for a subject
    QString note;                          ///< for the user: why the model was passed over; usually empty
};

using Expected = std::expected<Result, BackgroundRemovalError>;

/// Whether the flat background that was removed was one: more than 2 % of the pixels and less than 97 %.
constexpr bool isFlatBackground(double removedFraction) {
    return removedFraction > 0.02 && removedFraction < 0.97;
}

/// With the method asked for. Without one: the flat background first; its error is final, but when too little or too
/// much was removed, the subject is sought instead. Each engine is called at most once.
Expected choose(std::optional<Method> method, const std::function<Expected()>& solid,
                const std::function<Expected()>& subject);

/// The same with the engines of the house; `model` is the user's ONNX file or empty.
Expected remove(const QImage& image, std::optional<Method> method = {}, const std::filesystem::path& model = {},
                std::stop_token stop = {});

} // namespace Cutout

} // namespace quillary
