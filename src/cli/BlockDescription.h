#pragma once

#include "values/Arrangement.h"

#include <QJsonObject>

namespace quillary::cli {

/// What a block holds: "seconds", "usesGlidemark" and "layers".
QJsonObject described(const Arrangement::Summary& summary);

} // namespace quillary::cli
