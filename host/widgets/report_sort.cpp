#include "widgets/report_sort.h"

#include <QLocale>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>

namespace tarn {

namespace {

constexpr std::size_t remembered = 200'000; ///< texts, some 30 MB

/// A program in the "C" locale sorts as English does instead of by code point, which would put every capital before
/// every small letter.
QLocale reading_locale()
{
    const QLocale locale;
    return locale.language() == QLocale::C ? QLocale(QLocale::English) : locale;
}

} // namespace

TextOrder::TextOrder(const QLocale& locale) : m_collator(locale)
{
    m_collator.setNumericMode(true);
}

TextOrder& TextOrder::shared()
{
    // Lists live in one thread; the language is chosen before the first of them is there.
    static std::unique_ptr<TextOrder> order;
    const QLocale locale = reading_locale();
    if (!order || order->m_collator.locale() != locale)
        order = std::make_unique<TextOrder>(locale);
    return *order;
}

// A collation key costs as much as ten look-ups by text, and comparing keys from all over the memory costs even more.
// Both are paid once for a text: afterwards it has a rank among all texts seen, and ranks are sorted by counting.
std::vector<int> TextOrder::ids_of(const std::vector<QString>& texts)
{
    if (m_keys.size() > 2 * texts.size() + remembered) { // most of them are of rows that are gone
        m_ids.clear();
        m_keys.clear();
        m_reading_order.clear();
    }
    std::vector<int> ids;
    ids.reserve(texts.size());
    for (const QString& text : texts) {
        auto known = m_ids.constFind(text);
        if (known == m_ids.cend()) {
            known = m_ids.insert(text, int(m_keys.size()));
            m_keys.push_back(m_collator.sortKey(text));
        }
        ids.push_back(*known);
    }
    return ids;
}

/// New texts are sorted among themselves and merged with those whose order is known.
void TextOrder::rank_new_texts()
{
    const auto known = std::ptrdiff_t(m_reading_order.size());
    if (m_reading_order.size() == m_keys.size())
        return;
    for (std::size_t id = m_reading_order.size(); id < m_keys.size(); ++id)
        m_reading_order.push_back(int(id));
    const auto compare = [this](int a, int b) { return m_keys[std::size_t(a)].compare(m_keys[std::size_t(b)]); };
    const auto before = [&](int a, int b) { return compare(a, b) < 0; };
    std::sort(m_reading_order.begin() + known, m_reading_order.end(), before);
    std::inplace_merge(m_reading_order.begin(), m_reading_order.begin() + known, m_reading_order.end(), before);
    m_ranks.resize(m_keys.size());
    int rank = 0;
    for (std::size_t i = 0; i < m_reading_order.size(); ++i) {
        if (i > 0 && compare(m_reading_order[i - 1], m_reading_order[i]) != 0)
            ++rank;
        m_ranks[std::size_t(m_reading_order[i])] = rank;
    }
}

std::vector<int> TextOrder::sorted(const std::vector<QString>& texts, bool ascending)
{
    std::vector<int> ranks = ids_of(texts);
    rank_new_texts();
    const int last = int(m_keys.size());
    for (int& id : ranks) {
        const int rank = m_ranks[std::size_t(id)];
        id = ascending ? rank : last - rank;
    }
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
