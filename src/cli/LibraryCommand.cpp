#include "base/Text.h"
#include "base/Try.h"
#include "blocks/ArrangementStore.h"
#include "cli/Commands.h"
#include "cli/ProgressBar.h"
#include "library/AppSettings.h"
#include "library/Storage.h"

#include <algorithm>

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

class LibraryCopyTo final : public Command {
    void declare(Grammar& grammar) override {
        grammar.path("FROM", m_from, Value::folder,
                     "The library to copy: the folder “Quillary”, or the one that holds it");
        grammar.path("TO", m_to, Value::folder, "Where the copy goes, likewise; made when it is missing");
        grammar.text("--shelves", m_shelves, "LIST", "Only these: images, videos, audio, blocks, recent, with commas");
    }
    bool usesLibrary() const override { return false; }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        const CopySelection selection = TRY(selected());
        std::error_code missing;
        if (!fs::is_directory(m_from, missing))
            return std::unexpected(CommandError(QStringLiteral("There is no folder “%1”.").arg(shown(m_from))));
        const fs::path from =
            fs::is_directory(rootIn(m_from), missing) ? rootIn(m_from) : fs::absolute(m_from, missing);
        Storage target(services.settings.store(), services.bookmarks, services.desktop, fs::absolute(m_to, missing));
        const fs::path to = TRY(target.root());
        BatchProgress progress;
        CopyResult result;
        {
            const ProgressBar bar(progress, output);
            result = Storage::copyContents(from, to, selection, ArrangementStore::mediaOfBlocks, progress);
        }
        for (const auto& [file, reason] : result.failures)
            output.problem(QStringLiteral("“%1” could not be copied: %2").arg(shown(file), reason));
        if (output.json())
            output.document(
                QJsonObject{{QStringLiteral("copied"), result.copied}, {QStringLiteral("skipped"), result.skipped}});
        else
            output.line(result.summary());
        return result.failed > 0 ? ExitStatus::failed : ExitStatus::done;
    }

    static fs::path rootIn(const fs::path& folder) {
        std::error_code missing;
        return fs::absolute(folder, missing).lexically_normal() / "Quillary";
    }

    std::expected<CopySelection, CommandError> selected() const {
        if (!m_shelves) return CopySelection();
        CopySelection only{.images = false, .videos = false, .audio = false, .blocks = false, .recent = false};
        const std::pair<QStringView, bool&> shelves[] = {{u"images", only.images},
                                                         {u"videos", only.videos},
                                                         {u"audio", only.audio},
                                                         {u"blocks", only.blocks},
                                                         {u"recent", only.recent}};
        for (const QString& name : m_shelves->split(u',')) {
            const auto* shelf =
                std::ranges::find(shelves, name.trimmed(), [](const auto& known) { return known.first; });
            if (shelf == std::end(shelves))
                return std::unexpected(CommandError::usage(QStringLiteral("There is no shelf “%1”.").arg(name)));
            shelf->second = true;
        }
        return only;
    }

    fs::path m_from;
    fs::path m_to;
    std::optional<QString> m_shelves;
};

} // namespace

void declareLibrary(Grammar& root) {
    Grammar library = root.command<LibraryShow>("library", "Where the library is and what it holds");
    library.command<LibraryUse>("use", "Choose the folder that holds the library");
    library.command<LibraryDefault>("default", "Go back to the default location");
    library.command<LibraryCopyTo>("copy", "Copy a library's files to another place");
}

} // namespace quillary::cli
