#include "base/Text.h"
#include "base/Try.h"
#include "blocks/ArrangementStore.h"
#include "blocks/BlockChecks.h"
#include "blocks/BlockExport.h"
#include "cli/Commands.h"
#include "cli/MediaHundredths.h"
#include "cli/ProgressBar.h"
#include "library/Storage.h"

#include <QLocale>

namespace quillary::cli {

namespace fs = std::filesystem;

namespace {

QJsonArray jsonTexts(const QStringList& texts) {
    return QJsonArray::fromStringList(texts);
}

class BlockExportFor final : public Command {
    void declare(Grammar& grammar) override {
        grammar.path("FILE", m_file, Value::file, "A stored block, or any FCPXML file");
        grammar.choice("--to", m_format, {"fcpxml-1.10", "otio"}, "FCPXML 1.10, or OpenTimelineIO with flat tracks");
        grammar.path("--output", m_output, Value::file,
                     "Write this file; without it one named like the block appears in the current folder");
        grammar.flag("--relative", m_relative, "Name media as they are reached from the export");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        TRY(services.storage.root());
        ArrangementStore store(services.storage);
        BlockExport::Request request{.block = m_file,
                                     .format = m_format == u"otio" ? BlockExport::Format::otio
                                                                   : BlockExport::Format::fcpxml110,
                                     .output = m_output.value_or(fs::path()),
                                     .areTargetsRelative = m_relative};
        std::error_code gone;
        if (!m_output) request.folder = fs::current_path(gone);
        const BlockExport::Result result = TRY(BlockExport::write(store, request));
        if (output.json()) {
            output.document(QJsonObject{{QStringLiteral("output"), jsonPath(result.output)},
                                        {QStringLiteral("left_out"), jsonTexts(result.leftOut)}});
            return ExitStatus::done;
        }
        output.line(shown(result.output));
        if (!result.leftOut.isEmpty()) output.talk(QStringLiteral("Left out:"));
        for (const QString& text : result.leftOut) output.talk(QStringLiteral("  ") + text);
        return ExitStatus::done;
    }

    fs::path m_file;
    QString m_format;
    std::optional<fs::path> m_output;
    bool m_relative = false;
};

class BlockPortable final : public Command {
    void declare(Grammar& grammar) override {
        grammar.path("FILE", m_file, Value::file, "A stored block, or any FCPXML file");
        grammar.path("--output", m_folder, Value::folder, "Make the folder in this one, instead of the current one");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        TRY(services.storage.root());
        ArrangementStore store(services.storage);
        std::error_code gone;
        const fs::path parent = m_folder.value_or(fs::current_path(gone));
        const BlockExport::Portable made = TRY(pack(store, parent, output));
        if (output.json()) {
            output.document(QJsonObject{{QStringLiteral("folder"), jsonPath(made.folder)},
                                        {QStringLiteral("path"), jsonPath(made.document)},
                                        {QStringLiteral("media"), jsonPaths(made.media)}});
        } else {
            output.line(shown(made.folder));
        }
        return ExitStatus::done;
    }

    std::expected<BlockExport::Portable, CommandError> pack(ArrangementStore& store, const fs::path& parent,
                                                            const Output& output) const {
        BatchProgress progress;
        const ProgressBar bar(progress, output);
        return TRY(BlockExport::makePortable(store, m_file, parent, shownStem(m_file), hundredths(progress)));
    }

    fs::path m_file;
    std::optional<fs::path> m_folder;
};

QString word(BlockHealth::State state) {
    switch (state) {
    case BlockHealth::State::missing:
        return QStringLiteral("missing");
    case BlockHealth::State::moved:
        return QStringLiteral("moved");
    case BlockHealth::State::duplicate:
        return QStringLiteral("duplicate");
    case BlockHealth::State::incomplete:
        return QStringLiteral("incomplete");
    case BlockHealth::State::present:
        break;
    }
    return QStringLiteral("present");
}

class BlockCheck final : public Command {
    void declare(Grammar& grammar) override {
        grammar.files("FILE", m_files, "Stored blocks, or any FCPXML files; without one all of the library",
                      Grammar::Presence::optional);
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        const fs::path root = TRY(services.storage.root());
        std::vector<fs::path> blocks;
        std::error_code gone;
        for (const fs::path& file : m_files) blocks.push_back(fs::absolute(file, gone).lexically_normal());
        if (m_files.empty()) blocks = ArrangementStore(services.storage).files();
        ExitStatus status = ExitStatus::done;
        std::vector<BlockHealth> checked;
        for (auto& block : BlockChecks().check(root, blocks)) {
            if (block) {
                checked.push_back(*std::move(block));
            } else {
                output.problem(block.error().description());
                status = ExitStatus::failed;
            }
        }
        output.json() ? output.document(described(checked)) : print(checked, output);
        return status;
    }

    static QJsonArray described(const std::vector<BlockHealth>& checked) {
        QJsonArray blocks;
        for (const BlockHealth& block : checked) {
            QJsonArray media;
            for (const auto& file : block.media)
                media.append(
                    QJsonObject{{QStringLiteral("name"), file.name},
                                {QStringLiteral("state"), word(file.state)},
                                {QStringLiteral("path"), file.path.empty() ? QJsonValue() : jsonPath(file.path)}});
            blocks.append(QJsonObject{{QStringLiteral("path"), jsonPath(block.block)},
                                      {QStringLiteral("media"), media},
                                      {QStringLiteral("bytes"), static_cast<qint64>(block.bytes)}});
        }
        return blocks;
    }

    /// A line for each block, and below it one for each of its media that is not just there.
    static void print(const std::vector<BlockHealth>& checked, Output& output) {
        std::vector<Output::Row> rows;
        for (const BlockHealth& block : checked) {
            rows.push_back({shownStem(block.block), counted(static_cast<qsizetype>(block.media.size()), u"file"),
                            QLocale::c().formattedDataSize(static_cast<qint64>(block.bytes)), block.version});
            for (const auto& file : block.media)
                if (file.state != BlockHealth::State::present)
                    rows.push_back({QStringLiteral("  ") + file.name, word(file.state), {}, shown(file.path)});
        }
        output.table(rows, {2},
                     {Output::Paint::strong, Output::Paint::plain, Output::Paint::faint, Output::Paint::faint});
    }

    std::vector<fs::path> m_files;
};

} // namespace

void declareBlockCare(Grammar& block) {
    block.command<BlockExportFor>("export", "Write a block for another editor");
    block.command<BlockPortable>("portable", "Make a folder with a block and all its media");
    block.command<BlockCheck>("check", "Tell how the media of blocks are");
}

} // namespace quillary::cli
