#include "blocks/BlockExport.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "base/Try.h"
#include "blocks/ArrangementStore.h"
#include "blocks/MediaWholeness.h"
#include "blocks/export/FCPXMLDowngrade.h"
#include "blocks/export/FlatTimeline.h"
#include "blocks/export/OTIOWriter.h"
#include "platform/FileAttributes.h"
#include "platform/PendingFile.h"

namespace quillary::BlockExport {

namespace fs = std::filesystem;
using platform::PendingFile;

namespace {

std::expected<fs::path, platform::FileError> placed(const QByteArray& bytes, const Request& request,
                                                    const NumberedName& names) {
    const fs::path folder = request.folder ? *request.folder : request.output.parent_path();
    PendingFile file = TRY(PendingFile::holding(folder, bytes));
    TRY(file.sync());
    if (request.folder) return file.place(names);
    TRY(file.replace(request.output));
    return request.output;
}

void tellMissing(const FCPXMLDocument& document, LeftOut& leftOut) {
    for (const auto& reference : document.media()) {
        const auto file = reference.file();
        if (!file || !platform::regularFileSize(*file))
            leftOut.add(translate("Blocks", "Missing media, named all the same"), reference.shownName());
        else if (MediaWholeness::isCutShort(*file))
            leftOut.add(translate("Blocks", "Incomplete media, named all the same"), reference.shownName());
    }
}

std::expected<QByteArray, ArrangementFailure> converted(FCPXMLDocument& document, Format format, const QString& name,
                                                        const std::optional<fs::path>& from, LeftOut& leftOut) {
    if (format == Format::otio) {
        FlatTimeline timeline = TRY(flattened(document, leftOut));
        if (timeline.name.isEmpty()) timeline.name = name;
        return otioJson(timeline, from);
    }
    TRY(bringToVersion110(document, leftOut));
    for (auto& reference : document.media())
        if (const auto file = reference.file(); file && (from || reference.isRelative()))
            reference.setFile(*file, from);
    return document.serialize();
}

} // namespace

QString extension(Format format) {
    return format == Format::otio ? QStringLiteral("otio") : QStringLiteral("fcpxml");
}

std::expected<Result, ArrangementFailure> write(ArrangementStore& store, const Request& asked) {
    Request request = asked;
    std::error_code failed;
    if (request.folder) request.folder = fs::absolute(*request.folder, failed).lexically_normal();
    request.output = request.folder ? *request.folder / request.block.filename()
                                    : fs::absolute(request.output, failed).lexically_normal();
    const auto failure = [&](const QString& why) {
        return std::unexpected(ArrangementFailure(StorageError::couldNotWrite(request.output, why)));
    };
    if (!request.folder && fs::equivalent(request.output, request.block, failed))
        return failure(translate("Blocks", "It is the block itself."));
    if (!request.folder && fs::exists(request.output, failed) && !fs::is_regular_file(request.output, failed))
        return failure(translate("Blocks", "It is not a regular file."));

    FCPXMLDocument document = TRY(store.document(request.block));
    LeftOut leftOut;
    LeftOut missing;
    const auto from = request.areTargetsRelative ? std::optional(request.output.parent_path()) : std::nullopt;
    tellMissing(document, missing);
    const QByteArray bytes = TRY(converted(document, request.format, shownStem(request.block), from, leftOut));
    const NumberedName names(request.block.stem().native(), extension(request.format).toStdString());
    const auto output = placed(bytes, request, names);
    if (!output) return failure(output.error().description());
    return Result{*output, leftOut.texts() + missing.texts()};
}

} // namespace quillary::BlockExport
