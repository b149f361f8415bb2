#pragma once

#include <QString>

namespace quillary {

/// The SVG document in a text, from its first "<svg" to its last "</svg>"; empty when there is none. A text of 4,000,000
/// characters or more is not searched.
QString svgIn(const QString& text);

} // namespace quillary
