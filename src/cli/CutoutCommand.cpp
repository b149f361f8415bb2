#include "base/Text.h"
#include "base/Try.h"
#include "cli/Commands.h"
#include "cli/CutoutMethod.h"
#include "cli/ImageFile.h"
#include "cutout/TouchUp.h"
#include "library/AppSettings.h"

namespace quillary::cli {

namespace fs = std::filesystem;

namespace {

class CutoutCommand final : public Command {
    void declare(Grammar& grammar) override {
        grammar.path("FILE", m_file, Value::file, "The picture; “-” reads standard input");
        grammar.path("--output", m_output, Value::file, "Write the PNG here");
        grammar.choice("--method", m_method, cutoutMethods(), "How; by itself it takes what suits the picture");
        grammar.text("--edge", m_edge, "0…1", "Refine the edge by this much");
        grammar.flag("--clean-edge", m_touches.cleanEdge,
                     "Take the background's colour out of half-transparent pixels");
        grammar.flag("--enclosed", m_touches.enclosed, "Of a flat background, clear enclosed areas too");
        grammar.flag("--trim", m_touches.trim, "Cut the transparent border off");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        const auto edge = TRY(amount());
        const PastedImage image = TRY(readImage(m_file, services.settings));
        const auto cut = TRY(cutOut(image.image, m_method, services.settings, output));
        if (m_touches.enclosed && cut.method != Cutout::Method::solid)
            output.talk(QStringLiteral("A subject has no enclosed areas to clear; only a flat background has."));
        const QImage base = TouchUp::base(image.image, cut.image, cut.method, m_touches);
        const QImage picture = TouchUp::finish(image.image, base, edge, m_touches).image;
        TRY(writePng(picture, m_output));
        tell(cut, picture.size(), output);
        return ExitStatus::done;
    }

    std::expected<std::optional<double>, CommandError> amount() const {
        if (!m_edge) return std::nullopt;
        bool isNumber = false;
        const double edge = m_edge->toDouble(&isNumber);
        if (isNumber && edge >= 0 && edge <= 1) return edge;
        return std::unexpected(
            CommandError::usage(QStringLiteral("“%1” is no edge.").arg(*m_edge), QStringLiteral("It takes 0 to 1.")));
    }

    void tell(const Cutout::Result& cut, QSize size, Output& output) const {
        std::error_code ignored;
        const fs::path written = fs::absolute(m_output, ignored);
        const QString method = Cutout::label(cut.method);
        const auto fraction = cut.removedFraction;
        if (output.json())
            output.document(QJsonObject{
                {QStringLiteral("method"), method},
                {QStringLiteral("removedFraction"), fraction ? QJsonValue(*fraction) : QJsonValue()},
                {QStringLiteral("pixelWidth"), size.width()},
                {QStringLiteral("pixelHeight"), size.height()},
                {QStringLiteral("output"), jsonPath(written)},
            });
        else if (fraction)
            output.line(QStringLiteral("%1, %2 % removed").arg(method).arg(*fraction * 100, 0, 'f', 1));
        else
            output.line(method);
    }

    fs::path m_file;
    fs::path m_output;
    std::optional<QString> m_method;
    std::optional<QString> m_edge;
    TouchUp::Options m_touches;
};

} // namespace

void declareCutout(Grammar& root) {
    root.command<CutoutCommand>("cutout", "Cut out a picture's background");
}

} // namespace quillary::cli
