#pragma once

#include <QStringView>

namespace quillary {

/// The order in which people expect names: whatever their case, with the numbers in them compared by value ("Arrow 9"
/// before "Arrow 10"). The same in every locale; names that differ in case or leading zeros alone keep a fixed order.
bool naturallyBefore(QStringView a, QStringView b);

} // namespace quillary
