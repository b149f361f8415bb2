#include "cli/CommandError.h"

namespace quillary::cli {

CommandError::CommandError(QString text, std::optional<QString> advice, ExitStatus exitStatus)
    : message(std::move(text)), suggestion(std::move(advice)), status(exitStatus) {}

CommandError::CommandError(const StorageError& error)
    : message(error.description())
    , status(error.kind == StorageError::Kind::noRoot ? ExitStatus::noLibrary : ExitStatus::failed) {}

CommandError::CommandError(const ImageIntakeError& error)
    : message(error.description()), suggestion(error.recoverySuggestion()) {}

CommandError::CommandError(const ArrangementFailure& error) : message(error.description()) {
    if (const QString advice = error.recoverySuggestion(); !advice.isEmpty()) suggestion = advice;
}

CommandError::CommandError(const BackgroundRemovalError& error)
    : message(error.description()), suggestion(error.recoverySuggestion()) {}

CommandError CommandError::usage(QString text, std::optional<QString> advice) {
    return CommandError(std::move(text), std::move(advice), ExitStatus::usage);
}

} // namespace quillary::cli
