#pragma once

#include "blocks/ArrangementFailure.h"
#include "cutout/BackgroundRemovalError.h"
#include "imaging/ImageIntakeError.h"
#include "library/StorageError.h"

#include <QString>
#include <optional>

namespace quillary::cli {

/// What the program tells the shell when it ends.
enum class ExitStatus {
    done = 0,
    failed = 1,    ///< something failed, the rest was still done
    usage = 2,     ///< the words make no sense
    noLibrary = 3, ///< the library cannot be opened
};

/// Why a command came to nothing.
struct CommandError {
    QString message;
    std::optional<QString> suggestion = {};
    ExitStatus status = ExitStatus::failed;

    explicit CommandError(QString text, std::optional<QString> advice = {}, ExitStatus exitStatus = ExitStatus::failed);
    // Not explicit, so that TRY hands errors of the folders below on.
    CommandError(const StorageError& error);
    CommandError(const ImageIntakeError& error);
    CommandError(const BackgroundRemovalError& error);
    CommandError(const ArrangementFailure& error);

    static CommandError usage(QString text, std::optional<QString> advice = {});
};

} // namespace quillary::cli
