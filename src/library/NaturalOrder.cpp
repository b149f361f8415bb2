#include "library/NaturalOrder.h"

namespace quillary {

namespace {

/// The digits at the front of `rest`, leading zeros left out. Takes them off `rest`.
QStringView takeNumber(QStringView& rest) {
    qsizetype length = 0;
    while (length < rest.size() && rest[length].isDigit()) ++length;
    QStringView number = rest.first(length);
    rest = rest.sliced(length);
    while (number.size() > 1 && number[0].digitValue() == 0) number = number.sliced(1);
    return number;
}

/// Of two numbers without leading zeros the longer is the greater.
int compareNumbers(QStringView a, QStringView b) {
    if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
    for (qsizetype i = 0; i < a.size(); ++i)
        if (a[i].digitValue() != b[i].digitValue()) return a[i].digitValue() - b[i].digitValue();
    return 0;
}

int compareFolded(QStringView a, QStringView b) {
    while (!a.isEmpty() && !b.isEmpty()) {
        if (a[0].isDigit() && b[0].isDigit()) {
            const QStringView left = takeNumber(a);
            if (const int order = compareNumbers(left, takeNumber(b))) return order;
            continue;
        }
        const QChar left = a[0].toCaseFolded();
        const QChar right = b[0].toCaseFolded();
        if (left != right) return left < right ? -1 : 1;
        a = a.sliced(1);
        b = b.sliced(1);
    }
    return static_cast<int>(b.isEmpty()) - static_cast<int>(a.isEmpty());
}

} // namespace

bool naturallyBefore(QStringView a, QStringView b) {
    const int order = compareFolded(a, b);
    return order != 0 ? order < 0 : a < b;
}

} // namespace quillary
