#include "base/Text.h"
#include "cli/Commands.h"
#include "imaging/ImageTransform.h"

#include <algorithm>

namespace quillary::cli {

namespace fs = std::filesystem;

namespace {

class Transform final : public Command {
    void declare(Grammar& grammar) override {
        std::vector<std::string> operations;
        for (const auto operation : ImageTransform::allOperations)
            operations.push_back(ImageTransform::rawValue(operation).toStdString());
        grammar.choice("OPERATION", m_operation, operations, "What to do");
        grammar.files("FILE", m_files, "Pictures to rewrite in place");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices&, Output& output) override {
        const auto operation = ImageTransform::operation(m_operation);
        std::vector<fs::path> rewritten;
        std::vector<fs::path> untouched;
        for (const fs::path& file : m_files) {
            const auto outcome = operation ? ImageTransform::apply(*operation, file) : std::unexpected(QString());
            (outcome ? rewritten : untouched).push_back(file);
            if (!outcome)
                output.problem(QStringLiteral("“%1” could not be rewritten and is as it was: %2")
                                   .arg(shown(file), outcome.error()));
        }
        if (output.json())
            output.document(QJsonObject{{QStringLiteral("rewritten"), jsonPaths(rewritten)},
                                        {QStringLiteral("untouched"), jsonPaths(untouched)}});
        else
            for (const fs::path& file : rewritten) output.line(shown(file));
        return untouched.empty() ? ExitStatus::done : ExitStatus::failed;
    }

    QString m_operation;
    std::vector<fs::path> m_files;
};

} // namespace

void declareTransform(Grammar& root) {
    root.command<Transform>("transform", "Rotate or flip pictures in place");
}

} // namespace quillary::cli
