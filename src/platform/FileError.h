#pragma once

#include <QString>
#include <cerrno>

namespace quillary::platform {

/// What the operating system answered to a file operation: an errno value.
struct FileError {
    int code = 0;

    static FileError last() { return {errno}; }
    /// The system's own text, such as "No space left on device"; where that says nothing to a user, another one.
    QString description() const;

    bool operator==(const FileError&) const = default;
};

} // namespace quillary::platform
