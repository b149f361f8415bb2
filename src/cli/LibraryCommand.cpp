#include "base/Text.h"
#include "base/Try.h"
#include "cli/Commands.h"
#include "library/AppSettings.h"
#include "library/Storage.h"

namespace quillary::cli {

namespace fs = std::filesystem;

namespace {

const QString unavailable =
    QStringLiteral("Your chosen folder is not available — an external drive may be disconnected. "
                   "Using the default location until it is back.");

std::expected<ExitStatus, CommandError> show(Storage& storage, Output& output) {
    const fs::path root = TRY(storage.root());
    const ShelfCounts counts = storage.shelfCounts();
    const bool isDefault = root == storage.defaultRoot();
    const std::pair<QString, std::int64_t> shelves[] = {
        {QStringLiteral("images"), counts.images}, {QStringLiteral("videos"), counts.videos},
        {QStringLiteral("audio"), counts.audio},   {QStringLiteral("blocks"), counts.blocks},
        {QStringLiteral("recent"), counts.recent},
    };
    if (output.json()) {
        QJsonObject numbers;
        for (const auto& [shelf, count] : shelves) numbers.insert(shelf, static_cast<qint64>(count));
        output.document(QJsonObject{
            {QStringLiteral("root"), jsonPath(root)},
            {QStringLiteral("isDefault"), isDefault},
            {QStringLiteral("chosenFolderUnavailable"), storage.chosenFolderUnavailable()},
            {QStringLiteral("counts"), numbers},
        });
        return ExitStatus::done;
    }
    output.line(shown(root) + (isDefault ? QStringLiteral(" (default location)") : QString()));
    std::vector<Output::Row> rows;
    for (const auto& [shelf, count] : shelves) rows.push_back({QString::number(count), shelf});
    output.table(rows, {0}, {Output::Paint::strong, Output::Paint::faint});
    if (storage.chosenFolderUnavailable()) output.talk(unavailable);
    return ExitStatus::done;
}

class LibraryShow final : public Command {
    void declare(Grammar&) override {}
    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        return show(services.storage, output);
    }
};

class LibraryUse final : public Command {
    void declare(Grammar& grammar) override {
        grammar.path("DIR", m_folder, Value::folder, "The folder that is to hold “Quillary”");
    }
    bool choosesLibrary() const override { return true; }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        std::error_code missing;
        const fs::path folder = fs::absolute(m_folder, missing);
        if (!fs::is_directory(folder, missing)) return std::unexpected(StorageError::noRoot());
        // Tried before it is stored, so that a folder that cannot be opened leaves the choice as it was.
        Storage attempt(services.settings.store(), services.bookmarks, services.desktop, folder);
        TRY(attempt.root());
        services.storage.setCustomRoot(folder);
        return show(services.storage, output);
    }

    fs::path m_folder;
};

class LibraryDefault final : public Command {
    void declare(Grammar&) override {}
    bool choosesLibrary() const override { return true; }
    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        services.storage.clearCustomRoot();
        return show(services.storage, output);
    }
};

} // namespace

void declareLibrary(Grammar& root) {
    Grammar library = root.command<LibraryShow>("library", "Where the library is and what it holds");
    library.command<LibraryUse>("use", "Choose the folder that holds the library");
    library.command<LibraryDefault>("default", "Go back to the default location");
}

} // namespace quillary::cli
