#include "base/Text.h"
#include "base/Try.h"
#include "blocks/ArrangementStore.h"
#include "blocks/BlockFiles.h"
#include "cli/BlockDescription.h"
#include "cli/CollectionPath.h"
#include "cli/Commands.h"
#include "cli/ImageFile.h"
#include "cli/MediaHundredths.h"
#include "cli/ProgressBar.h"
#include "library/Storage.h"

namespace quillary::cli {

namespace fs = std::filesystem;

namespace {

std::expected<QByteArray, CommandError> documentAt(const fs::path& file) {
    if (file == "-") return standardInput();
    return TRY(FCPXMLDocument::bytesOf(file));
}

class BlockSave final : public Command {
    void declare(Grammar& grammar) override {
        grammar.path("FILE", m_file, Value::file, "The clip as FCPXML; “-” reads standard input");
        grammar.text("--name", m_name, "NAME", "Its name, instead of its own");
        grammar.text("--collection", m_collection, "PATH", "File it in this collection, such as “Titles / Openings”");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        TRY(services.storage.root());
        ArrangementStore store(services.storage);
        const Arrangement block = TRY(save(store, output));
        if (!output.json()) {
            output.line(shown(block.url));
            return ExitStatus::done;
        }
        QJsonObject object = described(block.summary);
        object.insert(QStringLiteral("path"), jsonPath(block.url));
        object.insert(QStringLiteral("name"), block.name);
        object.insert(QStringLiteral("collection"), jsonText(block.collection));
        QJsonArray media;
        if (const auto stored = FCPXMLDocument::read(block.url))
            for (const auto& reference : stored->media())
                if (const auto file = reference.file()) media.append(jsonPath(*file));
        object.insert(QStringLiteral("media"), media);
        output.document(object);
        return ExitStatus::done;
    }

    std::expected<Arrangement, CommandError> save(ArrangementStore& store, const Output& output) const {
        // A file has a folder, from which its relative references count.
        auto document = m_file == "-" ? FCPXMLDocument::parse(TRY(standardInput())) : FCPXMLDocument::read(m_file);
        BatchProgress progress;
        const ProgressBar bar(progress, output);
        if (!document) return std::unexpected(document.error());
        return TRY(store.save(*std::move(document), m_name, collectionOf(m_collection), hundredths(progress)));
    }

    fs::path m_file;
    std::optional<QString> m_name;
    std::optional<QString> m_collection;
};

class BlockXml final : public Command {
    void declare(Grammar& grammar) override { grammar.path("FILE", m_file, Value::file, "A stored block"); }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        TRY(services.storage.root());
        const auto xml = ArrangementStore(services.storage).xml(m_file);
        if (xml) {
            output.bytes(*xml);
            return ExitStatus::done;
        }
        TRY(FCPXMLDocument::read(m_file));
        return std::unexpected(CommandError(QStringLiteral("Could not read %1.").arg(shown(m_file.filename()))));
    }

    fs::path m_file;
};

class BlockMedia final : public Command {
    void declare(Grammar& grammar) override {
        grammar.path("FILE", m_file, Value::file, "A clip as FCPXML; “-” reads standard input");
        grammar.text("--collection", m_collection, "PATH", "File the media in this collection");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        TRY(services.storage.root());
        const QByteArray xml = TRY(documentAt(m_file));
        TRY(FCPXMLDocument::parse(xml));
        const auto file = reduce(services.storage, xml, output);
        if (output.json())
            output.document(QJsonObject{{QStringLiteral("path"), file ? jsonPath(*file) : QJsonValue()}});
        else if (file)
            output.line(shown(*file));
        else
            output.talk(QStringLiteral("The clip is more than one media file."));
        return ExitStatus::done;
    }

    std::optional<fs::path> reduce(Storage& storage, const QByteArray& xml, const Output& output) const {
        BatchProgress progress;
        const ProgressBar bar(progress, output);
        return ArrangementStore(storage).singleMediaFile(xml, collectionOf(m_collection), hundredths(progress));
    }

    fs::path m_file;
    std::optional<QString> m_collection;
};

class BlockPoster final : public Command {
    void declare(Grammar& grammar) override {
        grammar.path("FILE", m_file, Value::file, "A stored block");
        grammar.path("IMAGE", m_image, Value::file, "The picture to show for it");
        grammar.flag("--remove", m_remove, "Take the poster away");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        if (m_image.has_value() == m_remove)
            return std::unexpected(CommandError::usage(QStringLiteral("Name a picture, or use --remove."),
                                                       QStringLiteral("Try “quillary block poster --help”.")));
        TRY(services.storage.root());
        ArrangementStore store(services.storage);
        std::error_code ignored;
        const fs::path block = fs::absolute(m_file, ignored).lexically_normal();
        if (m_remove) {
            TRY(store.removePoster(block));
        } else {
            const PastedImage image = TRY(readImage(*m_image, services.settings));
            TRY(store.setPoster(image.image, block));
        }
        const fs::path poster = posterPath(block);
        if (output.json())
            output.document(QJsonObject{{QStringLiteral("poster"), m_remove ? QJsonValue() : jsonPath(poster)}});
        else if (!m_remove)
            output.line(shown(poster));
        return ExitStatus::done;
    }

    fs::path m_file;
    std::optional<fs::path> m_image;
    bool m_remove = false;
};

} // namespace

void declareBlocks(Grammar& root) {
    Grammar block = root.group("block", "Compound clips that keep their media");
    block.command<BlockSave>("save", "Keep a clip with its media");
    block.command<BlockXml>("xml", "Print the FCPXML that a drag carries");
    block.command<BlockMedia>("media", "Reduce a single clip to its one media file");
    block.command<BlockPoster>("poster", "Set or remove a block's poster");
    declareBlockCare(block);
}

} // namespace quillary::cli
