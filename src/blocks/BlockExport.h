#pragma once

#include "blocks/ArrangementFailure.h"

#include <QString>
#include <QStringList>
#include <expected>
#include <filesystem>
#include <optional>
#include <vector>

namespace quillary {

class ArrangementStore;
struct MediaProgress;

/// Blocks for other programs. Stateless; any thread. What is written appears whole or not at all.
namespace BlockExport {

enum class Format {
    fcpxml110, ///< FCPXML 1.10
    otio,      ///< OpenTimelineIO JSON, flat
};

/// How a format's files end: "fcpxml", "otio".
QString extension(Format format);

struct Request {
    std::filesystem::path block; ///< of the library or any other FCPXML file
    Format format = Format::otio;
    /// The file to write, which replaces one that stands there; never the block itself.
    std::filesystem::path output;
    /// Instead of `output`: the folder in which the export is named like the block, with a number where that is taken.
    std::optional<std::filesystem::path> folder = {};
    bool areTargetsRelative = false; ///< media named as they are reached from the export, not by absolute URLs
};

struct Result {
    std::filesystem::path output;
    QStringList leftOut; ///< what the format does not hold and which media are missing, for the eye
};

std::expected<Result, ArrangementFailure> write(ArrangementStore& store, const Request& request);

struct Portable {
    std::filesystem::path folder;
    std::filesystem::path document;           ///< in it
    std::vector<std::filesystem::path> media; ///< in its folder "Media"
};

/// Makes a folder in `parent` that holds the block, its poster and copies of all its media, which the document names by
/// relative references: it can be carried to another machine as it is. Named `name`, with a number where that is taken.
/// Fails, and leaves nothing, where a medium is missing, the space does not suffice or the work is stopped.
std::expected<Portable, ArrangementFailure> makePortable(ArrangementStore& store, const std::filesystem::path& block,
                                                         const std::filesystem::path& parent, const QString& name,
                                                         const MediaProgress& progress);

} // namespace BlockExport

} // namespace quillary
