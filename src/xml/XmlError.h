#pragma once

#include <QString>

namespace quillary::xml {

/// Why bytes are no document.
struct XmlError {
    enum class Kind {
        tooLarge,  ///< refused by its size, unread
        malformed, ///< `reason` and `line` say what and where
        noMemory,
    };

    Kind kind = Kind::malformed;
    QString reason = {};
    int line = 0; ///< from 1; 0 where no line is to blame

    /// The text shown to the user.
    QString description() const;
};

} // namespace quillary::xml
