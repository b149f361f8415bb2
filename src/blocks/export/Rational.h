#pragma once

#include <QByteArrayView>
#include <cstdint>
#include <optional>

namespace quillary {

/// An exact number of seconds, as a fraction in lowest terms. What does not fit into 64-bit terms is `invalid`, and so
/// is everything that is made of it: one look at the end of a calculation tells whether it held. A value; any thread.
class Rational {
public:
    constexpr Rational() = default;                                ///< 0
    constexpr Rational(std::int64_t whole) : m_numerator(whole) {} // NOLINT(google-explicit-constructor): it is one
    /// Invalid when the denominator is 0.
    Rational(std::int64_t numerator, std::int64_t denominator);
    static constexpr Rational invalid() {
        Rational none;
        none.m_denominator = 0;
        return none;
    }

    /// A time as FCPXML writes it: "1001/30000s", "5s" or "2.5s". Absent for every other text and for what does not
    /// fit.
    static std::optional<Rational> ofTime(QByteArrayView text);

    bool isValid() const { return m_denominator != 0; }
    std::int64_t numerator() const { return m_numerator; }
    std::int64_t denominator() const { return m_denominator; } ///< above 0; 0 only of an invalid one
    bool isWhole() const { return m_denominator == 1; }
    /// The whole number below it, or itself; 0 of an invalid one.
    std::int64_t floor() const;
    double toDouble() const; ///< the nearest one; not a number for an invalid one

    friend Rational operator+(const Rational& a, const Rational& b);
    friend Rational operator-(const Rational& a, const Rational& b);
    friend Rational operator*(const Rational& a, const Rational& b);
    /// Invalid when `b` is 0.
    friend Rational operator/(const Rational& a, const Rational& b);

    friend bool operator==(const Rational&, const Rational&) = default;
    /// False where one of them is invalid.
    friend bool operator<(const Rational& a, const Rational& b);
    friend bool operator>(const Rational& a, const Rational& b) { return b < a; }
    friend bool operator<=(const Rational& a, const Rational& b) { return a == b || a < b; }
    friend bool operator>=(const Rational& a, const Rational& b) { return b <= a; }

private:
    using Wide = __int128;
    static Rational reduced(Wide numerator, Wide denominator);

    std::int64_t m_numerator = 0;
    std::int64_t m_denominator = 1;
};

} // namespace quillary
