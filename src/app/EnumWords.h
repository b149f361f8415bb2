#pragma once

#include <QMetaEnum>
#include <QString>
#include <optional>

namespace quillary {

/// A value of a registered enumeration as the word that is kept and sent for it.
template <typename Enumeration>
QString wordOf(Enumeration value) {
    return QLatin1String(QMetaEnum::fromType<Enumeration>().valueToKey(static_cast<int>(value)));
}

/// Absent for a word that is none of its own.
template <typename Enumeration>
std::optional<Enumeration> valueOf(const QString& word) {
    bool known = false;
    const int value = QMetaEnum::fromType<Enumeration>().keyToValue(word.toLatin1().constData(), &known);
    return known ? std::optional(static_cast<Enumeration>(value)) : std::nullopt;
}

} // namespace quillary
