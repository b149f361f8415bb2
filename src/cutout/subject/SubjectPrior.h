#pragma once

#include "cutout/subject/Superpixels.h"

#include <vector>

namespace quillary::subject {

/// How likely each patch of a picture is a part of its subject, before any pixel is looked at.
///
/// What belongs to the background hangs together with the border along a good part of it; a subject that the border
/// cuts off does so along a small part only. Patches that differ from such background, near the middle more than at the
/// side, are likely subject. Both likelihoods are then spread so that like neighbours agree.
struct SubjectPrior {
    std::vector<float> background; ///< 0 … 1 per patch
    std::vector<float> subject;    ///< 0 … 1 per patch, the result
    float contrast = 0;            ///< the strongest difference of a patch from the background, in units of Lab
};

SubjectPrior subjectPriorOf(const Superpixels& picture);

} // namespace quillary::subject
