#include "base/Text.h"
#include "base/Try.h"
#include "blocks/ArrangementStore.h"
#include "cli/CollectionPath.h"
#include "cli/Commands.h"
#include "library/Storage.h"

#include <functional>

namespace quillary::cli {

namespace fs = std::filesystem;

namespace {

using Outcome = std::expected<fs::path, CommandError>;

/// A library file by the path that was given. What lies on no shelf is nobody's to change.
Outcome libraryFile(const fs::path& given, Storage& storage) {
    std::error_code missing;
    fs::path file = fs::absolute(given, missing).lexically_normal();
    if (!fs::is_regular_file(file, missing) && !fs::is_symlink(file, missing))
        return std::unexpected(CommandError(QStringLiteral("There is no file “%1”.").arg(shown(given))));
    if (!storage.shelfFolderOf(file))
        return std::unexpected(CommandError(QStringLiteral("“%1” is not in the library.").arg(shown(given))));
    return file;
}

/// A block is more than its document: its poster goes along.
bool isOnBlocksShelf(const fs::path& file, Storage& storage) {
    const auto shelf = storage.shelfFolderOf(file);
    return shelf && shelf->filename() == Storage::blocksFolder().filename();
}

QJsonObject placed(const fs::path& file) {
    return {{QStringLiteral("path"), jsonPath(file)}};
}

/// Does one thing to each file in turn and prints where each file is now, those that failed left out.
std::expected<ExitStatus, CommandError> forEach(const std::vector<fs::path>& files,
                                                const std::function<Outcome(const fs::path&)>& change,
                                                const CommandServices& services, Output& output) {
    TRY(services.storage.root());
    QJsonArray array;
    auto status = ExitStatus::done;
    for (const fs::path& given : files) {
        Outcome outcome = libraryFile(given, services.storage);
        if (outcome) outcome = change(*outcome);
        if (!outcome) {
            output.problem(outcome.error().message);
            status = ExitStatus::failed;
        } else if (output.json()) {
            array.append(placed(*outcome));
        } else {
            output.line(shown(*outcome));
        }
    }
    if (output.json()) output.document(array);
    return status;
}

template <typename Error>
Outcome asOutcome(std::expected<fs::path, Error> result) {
    return TRY(std::move(result));
}

class Favorite final : public Command {
    void declare(Grammar& grammar) override {
        grammar.files("FILE", m_files, "Files of the library");
        grammar.flag("--off", m_off, "Take the star off");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        std::vector<fs::path> marked;
        const auto change = [&](const fs::path& file) -> Outcome { return marked.emplace_back(file); };
        const ExitStatus status = TRY(forEach(m_files, change, services, output));
        services.storage.setFavorites(marked, !m_off);
        return status;
    }

    std::vector<fs::path> m_files;
    bool m_off = false;
};

class Move final : public Command {
    void declare(Grammar& grammar) override {
        grammar.files("FILE", m_files, "Files of the library");
        grammar.text("--collection", m_collection, "PATH", "Where to; “” is the shelf itself");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        const auto collection = collectionOf(m_collection);
        const auto change = [&](const fs::path& file) {
            if (!isOnBlocksShelf(file, services.storage)) return asOutcome(services.storage.move(file, collection));
            return asOutcome(ArrangementStore(services.storage).move(file, collection));
        };
        return forEach(m_files, change, services, output);
    }

    std::vector<fs::path> m_files;
    QString m_collection;
};

class Delete final : public Command {
    void declare(Grammar& grammar) override { grammar.files("FILE", m_files, "Files of the library"); }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        const auto change = [&](const fs::path& file) -> Outcome {
            if (isOnBlocksShelf(file, services.storage))
                TRY(ArrangementStore(services.storage).remove(file));
            else
                TRY(services.storage.remove(file));
            return file;
        };
        return forEach(m_files, change, services, output);
    }

    std::vector<fs::path> m_files;
};

class Trash final : public Command {
    void declare(Grammar& grammar) override { grammar.files("FILE", m_files, "Files of the library"); }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        const auto change = [&](const fs::path& file) -> Outcome {
            if (!isOnBlocksShelf(file, services.storage)) return TRY(services.storage.trash(file)).file;
            return TRY(ArrangementStore(services.storage).trash(file)).front().file;
        };
        return forEach(m_files, change, services, output);
    }

    std::vector<fs::path> m_files;
};

class Rename final : public Command {
    void declare(Grammar& grammar) override {
        grammar.path("FILE", m_file, Value::file, "A file of the library");
        grammar.text("NAME", m_name, "NAME", "Its new name, without the extension");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        TRY(services.storage.root());
        const fs::path file = TRY(libraryFile(m_file, services.storage));
        const fs::path renamed = TRY(isOnBlocksShelf(file, services.storage)
                                         ? asOutcome(ArrangementStore(services.storage).rename(file, m_name))
                                         : asOutcome(services.storage.rename(file, m_name)));
        if (output.json())
            output.document(QJsonArray{placed(renamed)});
        else
            output.line(shown(renamed));
        return ExitStatus::done;
    }

    fs::path m_file;
    QString m_name;
};

} // namespace

void declareLookingAfter(Grammar& root) {
    root.command<Favorite>("favorite", "Give files a star");
    root.command<Move>("move", "Move files to another collection of their shelf");
    root.command<Rename>("rename", "Give a file another name");
    root.command<Delete>("delete", "Delete files for good");
    root.command<Trash>("trash", "Move files to the trash of the desktop");
}

} // namespace quillary::cli
