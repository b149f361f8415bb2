#pragma once

#include <QByteArray>
#include <QString>

namespace quillary {

/// What people call the things that an FCPXML element of this name stands for, as a plural: "Titles". Elements without
/// such a word are named as they are.
QString plainName(const QByteArray& element);

} // namespace quillary
