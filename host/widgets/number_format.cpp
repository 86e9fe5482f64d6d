#include "widgets/number_format.h"

#include <QRegularExpression>

#include <charconv>
#include <cmath>

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
        else
            result += c;
    }
    return result;
}

} // namespace

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

bool may_become_number(QStringView text)
{
    static const QRegularExpression beginning(QStringLiteral("^[-+]?\\d*\\.?\\d*([eE][-+]?\\d*)?$"));
    return beginning.match(plain(text)).hasMatch();
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
