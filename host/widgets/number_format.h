#pragma once

#include <QString>

#include <optional>

namespace tarn {

/// Reads a number as a person types it: '.' or ',' is the decimal sign, digits of every script (full-width ones, for
/// example) count, blanks around it do not matter. Empty for anything else, for numbers too large for a double, and
/// for infinity and "not a number".
std::optional<double> parse_number(QStringView text);
/// Whether more typing could make a number of this text ("-", "1e", "" …).
bool may_become_number(QStringView text);

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
