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

QJsonArray described(const std::vector<BatchResult::Failure>& failures) {
    QJsonArray list;
    for (const auto& failure : failures)
        list.append(QJsonObject{{QStringLiteral("file"), jsonPath(failure.file)},
                                {QStringLiteral("message"), failure.message}});
    return list;
}

QJsonObject described(const BatchResult& result) {
    std::vector<fs::path> saved;
    for (const auto& file : result.saved) saved.push_back(file.file);
    return {
        {QStringLiteral("summary"), result.summary()},
        {QStringLiteral("saved"), jsonPaths(saved)},
        {QStringLiteral("duplicates"), jsonPaths(result.duplicates)},
        {QStringLiteral("failures"), described(result.failures)},
        {QStringLiteral("refused"), described(result.refused)},
    };
}

class Save final : public Command {
    void declare(Grammar& grammar) override {
        grammar.files("FILE", m_files, "Pictures, videos, sounds, FCPXML documents, or folders of them");
        grammar.text("--collection", m_collection, "PATH", "File them in this collection, such as “Logos / Sports”");
        grammar.flag("--keep-folders", m_keepFolders, "Make collections of the folders that the files lie in");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        TRY(services.storage.root());
        const BatchResult result = save(services, output);
        for (const auto* list : {&result.failures, &result.refused})
            for (const auto& failure : *list)
                output.problem(shown(failure.file) + QStringLiteral(": ") + failure.message);
        if (output.json())
            output.document(described(result));
        else
            output.line(result.summary());
        return result.isProblem() ? ExitStatus::failed : ExitStatus::done;
    }

    BatchResult save(const CommandServices& services, const Output& output) const {
        std::vector<fs::path> files;
        std::error_code ignored;
        for (const fs::path& file : m_files) files.push_back(fs::absolute(file, ignored));
        const auto collection = collectionOf(m_collection);
        BatchProgress progress;
        const ProgressBar bar(progress, output);
        const BatchTarget target{collection, collection, collection, collection, m_keepFolders, {}};
        return performSave(files, services.storage, target, services.settings.vectorLongEdge(), progress);
    }

    std::vector<fs::path> m_files;
    std::optional<QString> m_collection;
    bool m_keepFolders = false;
};

} // namespace

void declareSave(Grammar& root) {
    root.command<Save>("save", "File pictures, videos and sounds on the shelves");
}

} // namespace quillary::cli
