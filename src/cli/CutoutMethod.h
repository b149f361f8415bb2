#pragma once

#include "cli/CommandError.h"
#include "cli/Output.h"
#include "cutout/Cutout.h"

#include <QImage>
#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace quillary {
class AppSettings;
}

namespace quillary::cli {

/// The words for the methods of a cut-out; "auto" takes the one that suits the picture.
const std::vector<std::string>& cutoutMethods();

/// Cuts the picture out with one of `cutoutMethods`, none standing for "auto". Talks about a subject model that is of
/// no use.
std::expected<Cutout::Result, CommandError> cutOut(const QImage& image, const std::optional<QString>& method,
                                                   const AppSettings& settings, Output& output);

} // namespace quillary::cli
