#pragma once

#include "panel/PanelModel.h"

namespace quillary {

/// What was staged when another image was asked for, as it was: kept until that image is there, so that a failure can
/// give it back.
struct PanelModel::StagedBefore {
    PastedImage image;
    QImage cutout;
    QImage rawCutout;
    QImage edgeBase;
    QRect cutoutFrame;
    std::optional<CutoutMethod> cutoutMethod;
    QString cutoutNote;
    bool showCutout = false;
    bool refining = false; ///< `cutout` was not yet what the edge asked for
    DragFile::Aside file;
};

} // namespace quillary
