#include "cutout/SubjectMasker.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "cutout/subject/SubjectModule.h"
#include "platform/ModuleEntry.h"

#include <string>

namespace quillary {

namespace {

/// An engine of one of the modules, spoken to in this toolkit's types.
class ModuleMasker : public SubjectMasker {
public:
    /// `complaint` takes the engine's reason as %1.
    ModuleMasker(std::unique_ptr<subject::Engine> engine, QString complaint)
        : m_engine(std::move(engine)), m_complaint(std::move(complaint)) {}

    std::expected<std::optional<QImage>, QString> mask(const QImage& image, std::stop_token stop) override {
        const QImage picture = readable(image);
        QImage mask(image.size(), QImage::Format_Grayscale8);
        if (picture.isNull() || mask.isNull())
            return std::unexpected(m_complaint.arg(translate("Cutout", "out of memory")));
        std::string reason;
        const subject::Picture pixels{picture.constBits(), static_cast<std::size_t>(picture.bytesPerLine()),
                                      picture.width(), picture.height()};
        switch (
            m_engine->findSubject(pixels, mask.bits(), static_cast<std::size_t>(mask.bytesPerLine()), stop, reason)) {
        case subject::Outcome::found:
            return mask;
        case subject::Outcome::stopped:
        case subject::Outcome::noSubject:
            return std::nullopt;
        case subject::Outcome::failed:
            return std::unexpected(m_complaint.arg(QString::fromStdString(reason)));
        }
        return std::nullopt;
    }

private:
    /// Four bytes a pixel; transparency over a grey that is the same everywhere.
    static QImage readable(const QImage& image) {
        if (image.format() == QImage::Format_RGBX8888) return image;
        if (!image.hasAlphaChannel()) return image.convertToFormat(QImage::Format_RGBX8888);
        QImage result = image.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
        if (result.isNull()) return result;
        constexpr int grey = 128;
        for (int y = 0; y < result.height(); ++y) {
            uchar* const row = result.scanLine(y);
            for (uchar* pixel = row; pixel < row + qsizetype(result.width()) * 4; pixel += 4)
                for (int c = 0; c < 3; ++c) pixel[c] = static_cast<uchar>(pixel[c] + grey * (255 - pixel[3]) / 255);
        }
        return result;
    }

    std::unique_ptr<subject::Engine> m_engine;
    QString m_complaint;
};

std::expected<std::unique_ptr<SubjectMasker>, QString> masker(const char* module, const char* modelFile,
                                                              const QString& complaint) {
    QString missing;
    const auto entry = reinterpret_cast<subject::EngineEntry>(moduleEntry(module, subject::engineSymbol, missing));
    if (!entry) return std::unexpected(complaint.arg(missing));
    std::string reason;
    std::unique_ptr<subject::Engine> engine(entry(modelFile, &reason));
    if (!engine) return std::unexpected(complaint.arg(QString::fromStdString(reason)));
    return std::make_unique<ModuleMasker>(std::move(engine), complaint);
}

} // namespace

std::expected<std::unique_ptr<SubjectMasker>, QString> classicalSubjectMasker() {
    return masker(subject::classicalModule, nullptr, translate("Cutout", "Could not look for a subject: %1."));
}

std::expected<std::unique_ptr<SubjectMasker>, QString> modelSubjectMasker(const std::filesystem::path& file) {
    const QString name = shown(file.filename());
    std::error_code ignored;
    const auto complaint = [&](const QString& reason) {
        return translate("Cutout", "The subject model “%1” cannot be used: %2.").arg(name, reason);
    };
    if (!std::filesystem::is_regular_file(file, ignored))
        return std::unexpected(complaint(translate("Cutout", "there is no such file")));
    return masker(subject::modelModule, file.c_str(), complaint(QStringLiteral("%1")));
}

} // namespace quillary
