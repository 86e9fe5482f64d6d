#include "widgets/report_sort.h"

#include <QLocale>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tarn {

namespace {

/// A program in the "C" locale sorts as English does instead of by code point, which would put every capital before
/// every small letter.
QLocale reading_locale()
{
    const QLocale locale;
    return locale.language() == QLocale::C ? QLocale(QLocale::English) : locale;
}

} // namespace

TextOrder::TextOrder() : m_collator(reading_locale())
{
    m_collator.setNumericMode(true);
}

// A collation key costs as much as ten look-ups by text, and comparing keys from all over the memory costs even more.
// Both are paid once for a text: afterwards it has a rank among all texts seen, and ranks are sorted by counting.
void TextOrder::learn(const std::vector<QString>& texts)
{
    if (m_known.size() > 2 * texts.size() + 1000) { // most of them are of rows that are gone
        m_known.clear();
        m_ranks.clear();
    }
    const auto count = std::ptrdiff_t(m_known.size());
    for (const QString& text : texts) {
        if (m_ranks.contains(text))
            continue;
        m_ranks.insert(text, 0);
        m_known.push_back({text, m_collator.sortKey(text)});
    }
    if (count == std::ptrdiff_t(m_known.size()))
        return;
    const auto before = [](const Known& a, const Known& b) { return a.key.compare(b.key) < 0; };
    std::sort(m_known.begin() + count, m_known.end(), before);
    std::inplace_merge(m_known.begin(), m_known.begin() + count, m_known.end(), before);
    int rank = 0;
    for (std::size_t i = 0; i < m_known.size(); ++i) {
        if (i > 0 && m_known[i - 1].key.compare(m_known[i].key) != 0)
            ++rank;
        m_ranks[m_known[i].text] = rank;
    }
}

std::vector<int> TextOrder::sorted(const std::vector<QString>& texts, bool ascending)
{
    learn(texts);
    std::vector<int> ranks;
    ranks.reserve(texts.size());
    const int last = int(m_known.size());
    for (const QString& text : texts)
        ranks.push_back(ascending ? m_ranks.value(text) : last - m_ranks.value(text));
    // places[r] is where the next row of rank r goes.
    std::vector<int> places(std::size_t(last) + 2, 0);
    for (const int rank : ranks)
        ++places[std::size_t(rank) + 1];
    for (std::size_t rank = 1; rank < places.size(); ++rank)
        places[rank] += places[rank - 1];
    std::vector<int> order(texts.size());
    for (std::size_t row = 0; row < ranks.size(); ++row)
        order[std::size_t(places[std::size_t(ranks[row])]++)] = int(row);
    return order;
}

std::vector<int> number_order(const std::vector<QString>& texts, bool ascending)
{
    struct Keyed {
        double number;
        int row;
    };
    std::vector<Keyed> numbers;
    std::vector<int> others;
    for (size_t i = 0; i < texts.size(); ++i) {
        if (const auto number = leading_number(texts[i]))
            numbers.push_back({*number, int(i)});
        else
            others.push_back(int(i));
    }
    std::sort(numbers.begin(), numbers.end(), [ascending](const Keyed& a, const Keyed& b) {
        if (a.number == b.number)
            return a.row < b.row;
        return ascending ? a.number < b.number : a.number > b.number;
    });
    std::vector<int> order;
    order.reserve(texts.size());
    for (const Keyed& keyed : numbers)
        order.push_back(keyed.row);
    order.insert(order.end(), others.begin(), others.end());
    return order;
}

std::optional<double> leading_number(QStringView text)
{
    text = text.trimmed();
    if (text.startsWith(u'+'))
        text = text.mid(1);
    char buffer[64];
    int size = 0;
    for (; size < int(text.size()) && size < int(sizeof buffer); ++size) {
        const char16_t c = text[size].unicode();
        const bool numeric = (c >= u'0' && c <= u'9') || c == u'.' || c == u'-' || c == u'+' || c == u'e' || c == u'E';
        if (!numeric)
            break;
        buffer[size] = char(c);
    }
    double number = 0;
    const auto [end, error] = std::from_chars(buffer, buffer + size, number);
    if (error != std::errc() || !std::isfinite(number))
        return std::nullopt;
    return number;
}

} // namespace tarn
