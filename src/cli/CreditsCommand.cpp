#include "base/Text.h"
#include "cli/Commands.h"
#include "platform/FileAttributes.h"

namespace quillary::cli {

namespace fs = std::filesystem;

namespace {

class CreditsCommand final : public Command {
    void declare(Grammar& grammar) override { grammar.files("FILE", m_files, "Pictures or other files, anywhere"); }

    std::expected<ExitStatus, CommandError> run(const CommandServices&, Output& output) override {
        QJsonArray array;
        auto status = ExitStatus::done;
        for (const fs::path& file : m_files) {
            std::error_code missing;
            if (!fs::is_regular_file(file, missing)) {
                output.problem(QStringLiteral("There is no file “%1”.").arg(shown(file)));
                status = ExitStatus::failed;
                continue;
            }
            const WebOrigin origin = platform::webOrigin(file);
            const QString credit = creditOf(shownStem(file), origin);
            if (output.json())
                array.append(QJsonObject{{QStringLiteral("path"), jsonPath(fs::absolute(file, missing))},
                                         {QStringLiteral("page"), known(origin.page)},
                                         {QStringLiteral("image"), known(origin.address)}});
            else if (!credit.isEmpty())
                output.line(credit);
        }
        if (output.json()) output.document(array);
        return status;
    }

    static QJsonValue known(const QString& address) { return address.isEmpty() ? QJsonValue() : QJsonValue(address); }

    std::vector<fs::path> m_files;
};

} // namespace

void declareCredits(Grammar& root) {
    root.command<CreditsCommand>("credits", "Tell where on the web files were found");
}

} // namespace quillary::cli
