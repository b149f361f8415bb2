#include "base/Text.h"
#include "cli/Commands.h"
#include "library/PasteHistory.h"
#include "platform/Desktop.h"

namespace quillary::cli {

namespace {

class HistoryList final : public Command {
    void declare(Grammar&) override {}

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        QJsonArray array;
        for (const auto& entry : PasteHistory(services.desktop.cacheFolder()).entries()) {
            if (output.json())
                array.append(QJsonObject{{QStringLiteral("path"), jsonPath(entry.picture())},
                                         {QStringLiteral("name"), entry.name}});
            else
                output.line(QStringLiteral("%1\t%2").arg(shown(entry.picture()), entry.name));
        }
        if (output.json()) output.document(array);
        return ExitStatus::done;
    }
};

class HistoryClear final : public Command {
    void declare(Grammar&) override {}

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        const int count = PasteHistory(services.desktop.cacheFolder()).clear();
        if (output.json())
            output.document(QJsonObject{{QStringLiteral("deleted"), count}});
        else
            output.line(QStringLiteral("Forgot %1.").arg(counted(count, u"picture")));
        return ExitStatus::done;
    }
};

} // namespace

void declareHistory(Grammar& root) {
    Grammar history = root.group("history", "The pictures that were pasted or dropped last");
    history.command<HistoryList>("list", "List them, the newest first");
    history.command<HistoryClear>("clear", "Forget them");
}

} // namespace quillary::cli
