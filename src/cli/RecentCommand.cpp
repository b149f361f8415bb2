#include "base/Text.h"
#include "base/Try.h"
#include "cli/Commands.h"
#include "cli/CutoutMethod.h"
#include "cli/ImageFile.h"
#include "cutout/MatteRefiner.h"
#include "library/AppSettings.h"
#include "library/Storage.h"

namespace quillary::cli {

namespace {

class RecentAdd final : public Command {
    void declare(Grammar& grammar) override {
        grammar.path("FILE", m_file, Value::file, "The picture; “-” reads standard input");
        grammar.choice("--cutout", m_cutout, cutoutMethods(), "Cut its background out first, as the panel does");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        TRY(services.storage.root());
        PastedImage image = TRY(readImage(m_file, services.settings));
        if (m_cutout) {
            const auto cut = TRY(cutOut(image.image, m_cutout, services.settings, output));
            image = image.cutOut(MatteRefiner::refine(cut.image, MatteRefiner::usualAmount));
        }
        const auto written = TRY(services.storage.write(image, Storage::Folder::recent, {}));
        services.storage.pruneRecent(services.settings.recentLimit(), written);
        if (output.json())
            output.document(QJsonObject{{QStringLiteral("path"), jsonPath(written)}});
        else
            output.line(shown(written));
        return ExitStatus::done;
    }

    std::filesystem::path m_file;
    std::optional<QString> m_cutout;
};

class RecentPrune final : public Command {
    void declare(Grammar&) override {}

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        TRY(services.storage.root());
        const int deleted = services.storage.pruneRecent(services.settings.recentLimit());
        if (output.json())
            output.document(QJsonObject{{QStringLiteral("deleted"), deleted}});
        else
            output.line(QStringLiteral("Deleted %1.").arg(counted(deleted, u"file")));
        return ExitStatus::done;
    }
};

} // namespace

void declareRecent(Grammar& root) {
    Grammar recent = root.group("recent", "What was dragged out");
    recent.command<RecentAdd>("add", "Keep a picture as a drag-out does");
    recent.command<RecentPrune>("prune", "Delete the oldest files beyond the limit");
}

} // namespace quillary::cli
