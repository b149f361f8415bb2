#include "base/Text.h"
#include "base/Try.h"
#include "cli/CollectionPath.h"
#include "cli/Commands.h"
#include "cli/ProgressBar.h"
#include "library/AppSettings.h"
#include "panel/BatchSave.h"

namespace quillary::cli {

namespace fs = std::filesystem;

namespace {

QJsonObject described(const BatchResult& result) {
    QJsonArray failures;
    for (const auto& failure : result.failures)
        failures.append(QJsonObject{{QStringLiteral("file"), jsonPath(failure.file)},
                                    {QStringLiteral("message"), failure.message}});
    return {
        {QStringLiteral("summary"), result.summary()},
        {QStringLiteral("saved"), jsonPaths(result.saved)},
        {QStringLiteral("duplicates"), jsonPaths(result.duplicates)},
        {QStringLiteral("failures"), failures},
    };
}

class Save final : public Command {
    void declare(Grammar& grammar) override {
        grammar.files("FILE", m_files, "Pictures, videos, sounds, or folders of them");
        grammar.text("--collection", m_collection, "PATH", "File them in this collection, such as “Logos / Sports”");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        TRY(services.storage.root());
        const BatchResult result = save(services, output);
        for (const auto& failure : result.failures)
            output.problem(shown(failure.file) + QStringLiteral(": ") + failure.message);
        if (!result.ignored.empty())
            output.talk(QStringLiteral("Passed over %1 that the library does not keep.")
                            .arg(counted(static_cast<qsizetype>(result.ignored.size()), u"file")));
        if (output.json())
            output.document(described(result));
        else
            output.line(result.summary());
        return result.failures.empty() ? ExitStatus::done : ExitStatus::failed;
    }

    BatchResult save(const CommandServices& services, const Output& output) const {
        std::vector<fs::path> files;
        std::error_code ignored;
        for (const fs::path& file : m_files) files.push_back(fs::absolute(file, ignored));
        const auto collection = collectionOf(m_collection);
        BatchProgress progress;
        const ProgressBar bar(progress, output);
        return performSave(files, services.storage, {collection, collection, collection},
                           services.settings.vectorLongEdge(), progress);
    }

    std::vector<fs::path> m_files;
    std::optional<QString> m_collection;
};

} // namespace

void declareSave(Grammar& root) {
    root.command<Save>("save", "File pictures, videos and sounds on the shelves");
}

} // namespace quillary::cli
