#include "cutout/Cutout.h"

#include "base/Translation.h"
#include "base/Try.h"
#include "cutout/BackgroundRemover.h"
#include "cutout/SolidBackgroundRemover.h"

namespace quillary::Cutout {

QString label(Method method) {
    return method == Method::solid ? translate("Cutout", "Flat background") : translate("Cutout", "Subject");
}

Expected choose(std::optional<Method> method, const std::function<Expected()>& solid,
                const std::function<Expected()>& subject) {
    if (method == Method::subject) return subject();
    {
        Result result = TRY(solid());
        if (method == Method::solid || isFlatBackground(result.removedFraction.value_or(0))) return result;
    } // its pixels are gone before the subject is sought
    return subject();
}

Expected remove(const QImage& image, std::optional<Method> method, const std::filesystem::path& model,
                std::stop_token stop) {
    const auto solid = [&]() -> Expected {
        auto removed = TRY(SolidBackgroundRemover::remove(image, stop, SolidBackgroundRemover::Colors::withinAlpha));
        return Result{std::move(removed.image), Method::solid, removed.removedFraction, {}};
    };
    const auto subject = [&]() -> Expected {
        auto removed = TRY(BackgroundRemover::remove(image, model, stop));
        return Result{std::move(removed.image), Method::subject, {}, std::move(removed.note)};
    };
    return choose(method, solid, subject);
}

} // namespace quillary::Cutout
