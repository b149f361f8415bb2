#include "base/Text.h"
#include "base/Try.h"
#include "blocks/FCPXMLPasteboard.h"
#include "cli/Commands.h"
#include "cli/ImageFile.h"
#include "imaging/ImageIntake.h"
#include "imaging/Thumbnail.h"
#include "library/AppSettings.h"
#include "platform/Clipboard.h"

#include <QEventLoop>
#include <QLocale>
#include <thread>

namespace quillary::cli {

namespace fs = std::filesystem;

namespace {

struct SourceWords {
    QJsonObject operator()(const PastedImage::File& file) const { return words("file", shown(file.url)); }
    QJsonObject operator()(const PastedImage::RasterizedVector& vector) const {
        return words("rasterizedVector", vector.origin);
    }
    QJsonObject operator()(const PastedImage::Bitmap& bitmap) const { return words("bitmap", bitmap.type); }

    static QJsonObject words(const char* kind, const QString& value) {
        return {{QStringLiteral("kind"), QLatin1StringView(kind)}, {QStringLiteral("value"), value}};
    }
};

QJsonObject described(const PastedImage& image) {
    return {
        {QStringLiteral("name"), image.name},
        {QStringLiteral("pixelWidth"), qRound64(image.pixelSize.width())},
        {QStringLiteral("pixelHeight"), qRound64(image.pixelSize.height())},
        {QStringLiteral("hasAlphaChannel"), image.hasAlphaChannel},
        {QStringLiteral("formatLabel"), image.formatLabel},
        {QStringLiteral("source"), std::visit(SourceWords{}, image.source)},
        {QStringLiteral("provenance"), image.provenance()},
        {QStringLiteral("sourceBytes"), image.sourceBytes ? QJsonValue(*image.sourceBytes) : QJsonValue()},
        {QStringLiteral("warning"), jsonText(image.resolutionWarning())},
    };
}

void tell(const PastedImage& image, Output& output) {
    std::vector<Output::Row> rows{
        {QStringLiteral("Name"), image.name},
        {QStringLiteral("Size"),
         QStringLiteral("%1 × %2 pixels").arg(image.pixelSize.toSize().width()).arg(image.pixelSize.toSize().height())},
        {QStringLiteral("Format"), image.formatLabel},
        {QStringLiteral("Alpha"), image.hasAlphaChannel ? QStringLiteral("yes") : QStringLiteral("no")},
        {QStringLiteral("Source"), image.provenance()},
    };
    if (image.sourceBytes)
        rows.push_back({QStringLiteral("File size"), QLocale::c().formattedDataSize(*image.sourceBytes)});
    output.table(rows, {}, {Output::Paint::faint, Output::Paint::plain});
    if (const auto warning = image.resolutionWarning()) output.talk(*warning);
}

std::expected<ExitStatus, CommandError> finish(const PastedImage& image, const std::optional<fs::path>& file,
                                               Output& output) {
    if (file) TRY(writePng(image.image, *file));
    if (output.json())
        output.document(described(image));
    else
        tell(image, output);
    return ExitStatus::done;
}

class Intake final : public Command {
    void declare(Grammar& grammar) override {
        grammar.path("FILE", m_file, Value::file, "The picture; “-” reads standard input");
        grammar.path("--output", m_output, Value::file, "Write the exported PNG here");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        return finish(TRY(readImage(m_file, services.settings)), m_output, output);
    }

    fs::path m_file;
    std::optional<fs::path> m_output;
};

class Paste final : public Command {
    using Image = std::expected<PastedImage, CommandError>;

    void declare(Grammar& grammar) override {
        grammar.path("--output", m_output, Value::file, "Write the exported PNG here");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        return finish(TRY(read(services.settings.vectorLongEdge())), m_output, output);
    }

    bool needsDisplay() const override { return true; }

    /// Asks on a thread of its own, while this one serves the connection to the desktop.
    static Image read(int longEdge) {
        const auto clipboard = platform::systemClipboard();
        const auto focus = platform::focusForClipboard();
        const auto contents = clipboard->contents();
        Image image = std::unexpected(ImageIntakeError::nothingUsable());
        QEventLoop loop;
        const std::jthread asker([&] {
            image = read(*contents, longEdge);
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        });
        loop.exec();
        return image;
    }

    static Image read(platform::Pasteboard& pasteboard, int longEdge) {
        if (FCPXMLPasteboard::holdsFinalCutClips(pasteboard))
            return std::unexpected(CommandError(QStringLiteral("Final Cut clips can’t be pasted"),
                                                QStringLiteral("Drag the compound clip from the browser instead.")));
        return TRY(ImageIntake::read(pasteboard, longEdge));
    }

    std::optional<fs::path> m_output;
};

class ThumbnailCommand final : public Command {
    void declare(Grammar& grammar) override {
        grammar.path("FILE", m_file, Value::file, "The file");
        grammar.path("--output", m_output, Value::file, "Write the PNG here");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        std::error_code missing;
        const fs::path path = fs::absolute(m_file, missing);
        const QImage picture = services.thumbnails.load(path);
        if (picture.isNull()) return std::unexpected(ImageIntakeError::unreadableFile(path));
        TRY(writePng(picture, m_output));
        tellSize(picture, output);
        return ExitStatus::done;
    }

    fs::path m_file;
    fs::path m_output;
};

} // namespace

void declareClipboardAndFiles(Grammar& root) {
    root.command<Intake>("intake", "Read a picture as the Import tab does");
    root.command<Paste>("paste", "Read the picture on the clipboard");
    root.command<ThumbnailCommand>("thumbnail", "Make the small picture of a library tile");
}

} // namespace quillary::cli
