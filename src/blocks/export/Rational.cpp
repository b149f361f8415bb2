#include "blocks/export/Rational.h"

#include <QByteArray>
#include <algorithm>
#include <limits>

namespace quillary {

namespace {

using Wide = __int128;

Wide greatestDivisor(Wide a, Wide b) {
    if (a < 0) a = -a;
    while (b != 0) {
        const Wide rest = a % b;
        a = b;
        b = rest;
    }
    return a;
}

bool fits(Wide number) {
    return number >= std::numeric_limits<std::int64_t>::min() && number <= std::numeric_limits<std::int64_t>::max();
}

std::optional<std::int64_t> whole(QByteArrayView text) {
    bool isNumber = false;
    const qlonglong value = text.toLongLong(&isNumber);
    return isNumber ? std::optional<std::int64_t>(value) : std::nullopt;
}

std::optional<Rational> decimal(QByteArrayView text, qsizetype point) {
    constexpr qsizetype mostDigits = 18;
    const QByteArrayView fraction = text.sliced(point + 1);
    if (fraction.isEmpty() || fraction.size() > mostDigits ||
        !std::ranges::all_of(fraction, [](char c) { return c >= '0' && c <= '9'; }))
        return {};
    std::int64_t scale = 1;
    for (qsizetype digit = 0; digit < fraction.size(); ++digit) scale *= 10;
    const auto digits = whole(text.first(point).toByteArray() + fraction.toByteArray());
    return digits ? std::optional(Rational(*digits, scale)) : std::nullopt;
}

} // namespace

Rational::Rational(std::int64_t numerator, std::int64_t denominator) {
    *this = reduced(numerator, denominator);
}

Rational Rational::reduced(Wide numerator, Wide denominator) {
    if (denominator == 0) return invalid();
    if (denominator < 0) {
        numerator = -numerator;
        denominator = -denominator;
    }
    const Wide divisor = greatestDivisor(numerator, denominator);
    numerator /= divisor;
    denominator /= divisor;
    if (!fits(numerator) || !fits(denominator)) return invalid();
    Rational made;
    made.m_numerator = static_cast<std::int64_t>(numerator);
    made.m_denominator = static_cast<std::int64_t>(denominator);
    return made;
}

std::optional<Rational> Rational::ofTime(QByteArrayView text) {
    text = text.trimmed();
    if (!text.endsWith('s')) return {};
    text.chop(1);
    const auto slash = text.indexOf('/');
    if (slash < 0) {
        if (const auto point = text.indexOf('.'); point >= 0) return decimal(text, point);
        const auto number = whole(text);
        return number ? std::optional(Rational(*number)) : std::nullopt;
    }
    const auto numerator = whole(text.first(slash));
    const auto denominator = whole(text.sliced(slash + 1));
    if (!numerator || !denominator) return {};
    const Rational time(*numerator, *denominator);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

std::int64_t Rational::floor() const {
    if (!isValid()) return 0;
    const std::int64_t whole = m_numerator / m_denominator;
    return m_numerator % m_denominator < 0 ? whole - 1 : whole;
}

double Rational::toDouble() const {
    if (!isValid()) return std::numeric_limits<double>::quiet_NaN();
    return static_cast<double>(m_numerator) / static_cast<double>(m_denominator);
}

// Two products of 64-bit numbers, and the sum of two such, fit into 128 bits; an invalid operand's denominator of 0
// carries through the sums and products by itself.

Rational operator+(const Rational& a, const Rational& b) {
    using Wide = Rational::Wide;
    return Rational::reduced(Wide{a.m_numerator} * b.m_denominator + Wide{b.m_numerator} * a.m_denominator,
                             Wide{a.m_denominator} * b.m_denominator);
}

Rational operator-(const Rational& a, const Rational& b) {
    using Wide = Rational::Wide;
    return Rational::reduced(Wide{a.m_numerator} * b.m_denominator - Wide{b.m_numerator} * a.m_denominator,
                             Wide{a.m_denominator} * b.m_denominator);
}

Rational operator*(const Rational& a, const Rational& b) {
    using Wide = Rational::Wide;
    return Rational::reduced(Wide{a.m_numerator} * b.m_numerator, Wide{a.m_denominator} * b.m_denominator);
}

Rational operator/(const Rational& a, const Rational& b) {
    using Wide = Rational::Wide;
    if (!b.isValid()) return b;
    return Rational::reduced(Wide{a.m_numerator} * b.m_denominator, Wide{a.m_denominator} * b.m_numerator);
}

bool operator<(const Rational& a, const Rational& b) {
    using Wide = Rational::Wide;
    return a.isValid() && b.isValid() && Wide{a.m_numerator} * b.m_denominator < Wide{b.m_numerator} * a.m_denominator;
}

} // namespace quillary
