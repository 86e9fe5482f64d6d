#pragma once

#include <QString>

#include <optional>

namespace tarn {

/// Reads a number as a person types it: '.' or ',' is the decimal sign, digits of every script (full-width ones, for
/// example) count, blanks around it do not matter. Empty for anything else, for numbers too large for a double, and
/// for infinity and "not a number".
std::optional<double> parse_number(QStringView text);

/// A sum that a person types where a number goes: "120/2", "(3+4)*2". With an operator in front it changes the number
/// that is there: "+10", "*2", "/4", "+=1", "-=1". A lone "-5" is a number, not a change.
struct Sum {
    char change = 0; ///< '+', '-', '*' or '/' for a change by `number`; 0 for `number` itself
    double number = 0;

    /// What becomes of the number that was there. Not finite after a division by 0.
    double of(double before) const;
};

/// Reads a sum, in the digits and signs of parse_number(). Plain numbers without a '+' in front are sums, too. Empty for
/// anything else, and for one that is not finite.
std::optional<Sum> parse_sum(QStringView text);
/// Whether more typing could make a sum of this text ("120/", "(" …).
bool may_become_sum(QStringView text);

/// How a number is shown: what a printf conversion asks for, without ever handing a text to printf, and with '.'
/// as the decimal sign whatever the locale.
class NumberFormat {
public:
    /// Seven significant digits, as many as a 32-bit float has.
    NumberFormat() = default;

    /// Takes exactly one conversion of %f, %e or %g with optional flags, width and precision ("%.2f", "%1.0f").
    /// Empty for any other text.
    static std::optional<NumberFormat> from_printf(const QString& format);
    /// %g
    static NumberFormat general();

    QString text(double number) const;
    /// The number as it is shown, where the format has a fixed count of decimals; otherwise the number itself.
    double rounded(double number) const;
    /// The same without the decimals that are not shown: 12.9 under %.0f is 12.
    double truncated(double number) const;

private:
    char m_conversion = 'g';
    int m_precision = 7;
    int m_zero_width = 0;
    bool m_shows_plus = false;
};

} // namespace tarn
