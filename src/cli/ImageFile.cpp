#include "cli/ImageFile.h"

#include "base/Text.h"
#include "base/Try.h"
#include "imaging/ImageIntake.h"
#include "imaging/PngEncoder.h"
#include "library/AppSettings.h"
#include "platform/PendingFile.h"

#include <QMimeDatabase>
#include <array>
#include <cstdio>

namespace quillary::cli {

namespace fs = std::filesystem;

namespace {

constexpr qsizetype largestInput = qsizetype(1) << 30;

CommandError unreadableInput() {
    return CommandError(QStringLiteral("Could not read standard input."),
                        ImageIntakeError::emptyImage().recoverySuggestion());
}

QString typeOf(const QByteArray& data) {
    const QString type = QMimeDatabase().mimeTypeForData(data).name();
    // A drawing may begin with a comment of any length.
    const bool text = type.startsWith(u"text/") || type == u"application/xml";
    return text && data.contains("<svg") ? QStringLiteral("image/svg+xml") : type;
}

CommandError couldNotWrite(const fs::path& file, const QString& reason) {
    return StorageError::couldNotWrite(file, reason);
}

} // namespace

std::expected<QByteArray, CommandError> standardInput() {
    QByteArray data;
    std::array<char, 1 << 16> piece;
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), stdin)) {
        data.append(piece.data(), static_cast<qsizetype>(count));
        if (data.size() > largestInput)
            return std::unexpected(CommandError(QStringLiteral("Standard input is larger than any document.")));
    }
    if (std::ferror(stdin)) return std::unexpected(unreadableInput());
    return data;
}

std::expected<PastedImage, CommandError> readImage(const fs::path& file, const AppSettings& settings) {
    if (file == "-") {
        const QByteArray data = TRY(standardInput());
        auto image = ImageIntake::read(data, PastedImage::defaultName(), typeOf(data), settings.vectorLongEdge());
        if (image) return *std::move(image);
        if (image.error().kind == ImageIntakeError::Kind::nothingUsable) return std::unexpected(unreadableInput());
        return std::unexpected(image.error());
    }
    std::error_code missing;
    const fs::path path = fs::absolute(file, missing);
    if (!fs::is_regular_file(path, missing)) return std::unexpected(ImageIntakeError::unreadableFile(path));
    return TRY(ImageIntake::read(path, settings.vectorLongEdge()));
}

std::expected<void, CommandError> writePng(const QImage& image, const fs::path& file) {
    std::error_code ignored;
    const fs::path target = fs::absolute(file, ignored);
    if (fs::exists(target, ignored) && !fs::is_regular_file(target, ignored))
        return std::unexpected(couldNotWrite(target, QStringLiteral("It is not a regular file")));
    const QByteArray png = pngData(image);
    if (png.isEmpty()) return std::unexpected(StorageError::couldNotEncodePNG());

    const auto write = [&]() -> std::expected<void, platform::FileError> {
        auto pending = TRY(platform::PendingFile::holding(target.parent_path(), png));
        TRY(pending.sync());
        return pending.replace(target);
    };
    if (const auto written = write(); !written)
        return std::unexpected(couldNotWrite(target, written.error().description()));
    return {};
}

void tellSize(const QImage& image, Output& output) {
    if (output.json())
        output.document(QJsonObject{{QStringLiteral("pixelWidth"), image.width()},
                                    {QStringLiteral("pixelHeight"), image.height()}});
    else
        output.line(QStringLiteral("%1 × %2 pixels").arg(image.width()).arg(image.height()));
}

} // namespace quillary::cli
