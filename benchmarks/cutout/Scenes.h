#pragma once

#include <QImage>
#include <string>
#include <vector>

namespace quillary::benchmark {

/// A synthesised photograph and what a perfect cut-out would keep of it.
struct Scene {
    QImage picture; ///< RGBX8888
    QImage mask;    ///< Grayscale8: 0 background, 255 subject, between them the soft edge; all 0 without a subject
};

/// Subjects of irregular outline, painted with a texture and a light of their own, on backgrounds of many kinds.
namespace Scenes {

struct Class {
    std::string name;
    bool hasSubject;
};

/// In the order in which they are reported.
const std::vector<Class>& classes();

/// Scene `number` of a class, the same in every run; the longer side has `side` pixels.
Scene make(const Class& kind, int number, int side = 960);

} // namespace Scenes

} // namespace quillary::benchmark
