#pragma once

#include <QByteArray>

namespace quillary::test {

/// An ONNX file with one convolution of 1 × 1 from three channels of 320 × 320 pixels to one: logits that are `red`
/// times the normalised red plus `green` times the normalised green.
QByteArray tinyModel(float red, float green);

} // namespace quillary::test
