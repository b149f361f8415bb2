#include "media/LengthLabel.h"

#include "base/Translation.h"

namespace quillary {

QString lengthLabel(double seconds) {
    if (!(seconds > 0)) return {};
    if (seconds < 10) return translate("Shelf", "%1s", "seconds").arg(seconds, 0, 'f', 1);
    const auto whole = static_cast<qint64>(seconds);
    return QStringLiteral("%1:%2").arg(whole / 60).arg(whole % 60, 2, 10, QLatin1Char('0'));
}

} // namespace quillary
