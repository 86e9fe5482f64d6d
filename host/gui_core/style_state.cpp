#include "style_state.h"

#include "core/field.h"

#include <QRect>
#include <QStringList>

#include <array>
#include <utility>

namespace tarn {

namespace {

constexpr int largest_edge = 10000; ///< pixels
constexpr QLatin1String bold_word("bold");
constexpr QLatin1String italic_word("italic");
constexpr QLatin1String shadow_word("shadow");

/// The whole numbers of a text that is nothing but `count` of them.
template <std::size_t count>
bool read_numbers(const QString& text, QChar separator, std::array<int, count>& numbers)
{
    const QStringList parts = text.split(separator);
    bool ok = parts.size() == qsizetype(count);
    for (std::size_t i = 0; ok && i < count; ++i)
        numbers[i] = parts[qsizetype(i)].trimmed().toInt(&ok);
    return ok;
}

} // namespace

const FieldTable& StyleState::field_table()
{
    using S = StyleState;
    static const FieldTable table(
        nullptr, field<S, &S::id>("id", quint32(0), read_only()),
        field<S, &S::name>("name", QString(), max_length(max_name)), field<S, &S::base>("base"),
        field<S, &S::origin>("origin", 0, range(0, 2)), field<S, &S::tokens>("tokens"), field<S, &S::colors>("colors"),
        field<S, &S::regions>("regions"), field<S, &S::edges>("edges"),
        field<S, &S::fonts>("fonts", {}, max_length(100)), field<S, &S::font_sizes>("font_sizes", {}, range(0, 500)),
        field<S, &S::font_styles>("font_styles", {}, max_length(100)),
        field<S, &S::atlas>("atlas", {}, {.read_only = true, .derived = true}));
    return table;
}

QString color_text(quint32 argb)
{
    return QLatin1Char('#') + QStringLiteral("%1").arg(argb, 8, 16, QLatin1Char('0'));
}

StyleValue style_value(const QString& text)
{
    if (!text.startsWith(QLatin1Char('#')))
        return {text, 0};
    bool ok = false;
    const quint32 color = text.mid(1).toUInt(&ok, 16);
    return {{}, ok ? color : 0};
}

QString font_style_text(FontStyle style)
{
    QStringList words;
    for (const auto& [is_set, word] :
         {std::pair(style.bold, bold_word), std::pair(style.italic, italic_word), std::pair(style.shadow, shadow_word)})
        if (is_set)
            words.append(word);
    return words.isEmpty() ? QStringLiteral("regular") : words.join(QLatin1Char(' '));
}

FontStyle font_style_from(const QString& text)
{
    const QStringList words = text.split(QLatin1Char(' '));
    return {.bold = words.contains(bold_word),
            .italic = words.contains(italic_word),
            .shadow = words.contains(shadow_word)};
}

QString rect_text(const QRect& rect)
{
    return QStringLiteral("%1 %2 %3 %4")
        .arg(rect.x())
        .arg(rect.y())
        .arg(rect.x() + rect.width())
        .arg(rect.y() + rect.height());
}

QRect rect_from(const QString& text)
{
    std::array<int, 4> n{};
    if (!read_numbers(text, QLatin1Char(' '), n) || n[0] < 0 || n[1] < 0 || n[2] > Atlas::width
        || n[3] > Atlas::max_height || n[2] <= n[0] || n[3] <= n[1])
        return {};
    return {n[0], n[1], n[2] - n[0], n[3] - n[1]};
}

QString edges_text(const QMargins& edges)
{
    return QStringLiteral("%1/%2/%3/%4").arg(edges.left()).arg(edges.top()).arg(edges.right()).arg(edges.bottom());
}

QMargins edges_from(const QString& text, bool& ok)
{
    std::array<int, 4> n{};
    ok = read_numbers(text, QLatin1Char('/'), n);
    for (const int width : n)
        ok = ok && width >= 0 && width <= largest_edge;
    return ok ? QMargins(n[0], n[1], n[2], n[3]) : QMargins();
}

} // namespace tarn
