#include "widgets/number_format.h"

#include <QRegularExpression>

#include <charconv>
#include <cmath>
#include <string_view>

namespace tarn {
namespace {

constexpr int max_precision = 17;
constexpr int max_width = 32;

// Digits, signs and decimal signs of all scripts in ASCII; other characters stay.
QString plain(QStringView text)
{
    QString result;
    for (const QChar c : text.trimmed()) {
        const char16_t unit = c.unicode();
        if (c.category() == QChar::Number_DecimalDigit)
            result += QChar(u'0' + char16_t(c.digitValue()));
        else if (unit == u',' || unit == u'\uFF0C' || unit == u'\uFF0E' || unit == u'\u3002')
            result += u'.';
        else if (unit == u'\u2212' || unit == u'\uFF0D')
            result += u'-';
        else if (unit == u'\uFF0B')
            result += u'+';
        else if (unit == u'\u00D7' || unit == u'\uFF0A')
            result += u'*';
        else if (unit == u'\u00F7' || unit == u'\uFF0F')
            result += u'/';
        else if (unit == u'\uFF08' || unit == u'\uFF09')
            result += unit == u'\uFF08' ? u'(' : u')';
        else if (unit == u'\uFF1D')
            result += u'=';
        else
            result += c;
    }
    return result;
}

constexpr std::size_t longest_sum = 200; ///< letters; each opening parenthesis is a call deeper

/// Works a sum out: products bind before sums, both from the left.
class SumReader {
public:
    explicit SumReader(std::string_view text) : m_rest(text) {}

    std::optional<double> read_all()
    {
        const auto total = read_total();
        return total && m_rest.empty() && std::isfinite(*total) ? total : std::nullopt;
    }

private:
    bool take(char sign)
    {
        while (!m_rest.empty() && m_rest.front() == ' ')
            m_rest.remove_prefix(1);
        if (m_rest.empty() || m_rest.front() != sign)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    std::optional<double> read_total()
    {
        auto total = read_product();
        while (total) {
            const bool plus = take('+');
            if (!plus && !take('-'))
                break;
            const auto next = read_product();
            total = next ? std::optional(plus ? *total + *next : *total - *next) : std::nullopt;
        }
        return total;
    }

    std::optional<double> read_product()
    {
        auto product = read_factor();
        while (product) {
            const bool times = take('*');
            if (!times && !take('/'))
                break;
            const auto next = read_factor();
            product = next ? std::optional(times ? *product * *next : *product / *next) : std::nullopt;
        }
        return product;
    }

    std::optional<double> read_factor()
    {
        if (take('-')) {
            const auto factor = read_factor();
            return factor ? std::optional(-*factor) : std::nullopt;
        }
        if (take('(')) {
            const auto inside = read_total();
            return inside && take(')') ? inside : std::nullopt;
        }
        double number = 0;
        const auto [stop, error] = std::from_chars(m_rest.data(), m_rest.data() + m_rest.size(), number);
        if (error != std::errc() || !std::isfinite(number)) // from_chars knows "inf" and "nan".
            return std::nullopt;
        m_rest.remove_prefix(std::size_t(stop - m_rest.data()));
        take(' ');
        return number;
    }

    std::string_view m_rest;
};

} // namespace

double Sum::of(double before) const
{
    switch (change) {
    case '+': return before + number;
    case '-': return before - number;
    case '*': return before * number;
    case '/': return before / number;
    default: return number;
    }
}

std::optional<double> parse_number(QStringView text)
{
    const QByteArray typed = plain(text).toUtf8();
    const char* begin = typed.constData();
    const char* const end = begin + typed.size();
    if (begin != end && *begin == '+' && begin + 1 != end && begin[1] != '-')
        ++begin;
    double number = 0;
    const auto [stop, error] = std::from_chars(begin, end, number);
    if (error != std::errc() || stop != end || !std::isfinite(number))
        return std::nullopt;
    return number;
}

std::optional<Sum> parse_sum(QStringView text)
{
    const QByteArray typed = plain(text).toUtf8();
    std::string_view rest(typed.constData(), std::size_t(typed.size()));
    if (rest.empty() || rest.size() > longest_sum)
        return std::nullopt;
    Sum sum;
    const bool assigns = rest.size() > 1 && rest[1] == '=';
    if (std::string_view("+-*/").find(rest[0]) != std::string_view::npos && (rest[0] != '-' || assigns)) {
        sum.change = rest[0];
        rest.remove_prefix(assigns ? 2 : 1);
    }
    const auto number = SumReader(rest).read_all();
    if (!number || (sum.change == '/' && *number == 0))
        return std::nullopt;
    sum.number = *number;
    return sum;
}

bool may_become_sum(QStringView text)
{
    static const QRegularExpression signs(QStringLiteral("^([-+*/]=?)?[-+*/ ().\\deE]*$"));
    return text.size() <= qsizetype(longest_sum) && signs.match(plain(text)).hasMatch();
}

std::optional<NumberFormat> NumberFormat::from_printf(const QString& format)
{
    static const QRegularExpression conversion(
        QStringLiteral("\\A%([-+ 0#]*)([0-9]{0,3})(?:\\.([0-9]{0,3}))?l?([feg])\\z"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = conversion.match(format);
    if (!match.hasMatch())
        return std::nullopt;
    NumberFormat result;
    const QString flags = match.captured(1);
    const QString precision = match.captured(3);
    result.m_conversion = match.captured(4).front().toLatin1();
    if (result.m_conversion == 'F')
        result.m_conversion = 'f';
    result.m_shows_plus = flags.contains(u'+');
    if (flags.contains(u'0') && !flags.contains(u'-'))
        result.m_zero_width = qMin(match.captured(2).toInt(), max_width);
    // A point without digits behind it asks for none; without a point it is six.
    result.m_precision = match.capturedStart(3) < 0 ? 6 : qMin(precision.toInt(), max_precision);
    return result;
}

NumberFormat NumberFormat::general()
{
    NumberFormat format;
    format.m_precision = 6;
    return format;
}

QString NumberFormat::text(double number) const
{
    QString digits = QString::number(std::abs(number), m_conversion, m_precision);
    const bool is_zero = digits.toDouble() == 0;
    const QString sign = number < 0 && !is_zero ? QStringLiteral("-") : m_shows_plus ? QStringLiteral("+") : QString();
    return sign + digits.rightJustified(m_zero_width - sign.size(), u'0');
}

double NumberFormat::rounded(double number) const
{
    return m_conversion == 'f' ? QString::number(number, 'f', m_precision).toDouble() : number;
}

double NumberFormat::truncated(double number) const
{
    // Only where rounding went away from zero is one step taken back. Cutting the digits off would turn 0.3, which is a
    // little less than that, into 0.2.
    const double near = rounded(number);
    const double step = std::pow(10.0, -m_precision);
    return std::abs(near) > std::abs(number) ? rounded(near - std::copysign(step, number)) : near;
}

} // namespace tarn
