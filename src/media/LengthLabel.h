#pragma once

#include <QString>

namespace quillary {

/// A length as people read it: "0:14", or "2.4s" below ten seconds; empty for a length of 0.
QString lengthLabel(double seconds);

} // namespace quillary
