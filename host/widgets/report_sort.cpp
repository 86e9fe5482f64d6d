#include "widgets/report_sort.h"

#include <QCollator>
#include <QLocale>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <numeric>

namespace tarn {
namespace {

// A collator costs about as much per comparison as building one of these keys. Each character that occurs gets a
// rank, asked of the collator once; a text's key is the bytes of its ranks, compared by memcmp. Ranks ignore case
// and accents, which a collator looks at only when all letters are equal; such ties go to the collator itself.
class RankTable {
public:
    RankTable(const std::vector<QString>& texts, const QCollator& collator) : m_ranks(65536, 0)
    {
        std::vector<bool> seen(65536, false);
        for (const QString& text : texts)
            for (const QChar c : text)
                seen[c.unicode()] = true;
        for (int unit = 0; unit < 65536; ++unit)
            if (seen[size_t(unit)] && !is_printable_ascii(unit))
                m_is_ascii = false;
        assign(seen, ignoring_case(collator));
    }

    /// For all characters of a keyboard.
    explicit RankTable(const QCollator& collator) : m_ranks(65536, 0)
    {
        std::vector<bool> seen(65536, false);
        for (int unit = 0; unit < 128; ++unit)
            seen[size_t(unit)] = is_printable_ascii(unit);
        assign(seen, ignoring_case(collator));
    }

    quint16 rank(QChar c) const { return m_ranks[c.unicode()]; }
    bool is_wide() const { return m_count > 255; }
    bool is_ascii() const { return m_is_ascii; }

    /// Whether ranks tell the whole order: each letter sorts the same behind every other one, so that no two of them
    /// sort as one ("ch" does in some languages), and case matters only between otherwise equal texts.
    bool tells_all(const QCollator& collator) const
    {
        std::vector<QChar> letters;
        for (char16_t unit = 0; unit < 128; ++unit)
            if (m_ranks[unit] > 0)
                letters.push_back(QChar(unit));
        std::sort(letters.begin(), letters.end(), [this](QChar a, QChar b) { return rank(a) < rank(b); });
        for (const QChar first : letters)
            for (size_t i = 1; i < letters.size(); ++i) {
                const bool same_rank = rank(letters[i - 1]) == rank(letters[i]);
                const QChar before[] = {first, letters[i - 1], letters.front()};
                const QChar after[] = {first, letters[i], letters.back()};
                if (collator.compare(before, same_rank ? 3 : 2, after, same_rank ? 3 : 2) >= 0)
                    return false;
                const QChar upper[] = {first, letters[i], letters.front()};
                const QChar lower[] = {first, letters[i - 1], letters.back()};
                if (same_rank && collator.compare(upper, 3, lower, 3) >= 0)
                    return false;
            }
        return true;
    }

private:
    struct Letter {
        QString base;
        char16_t unit;
    };

    static bool is_printable_ascii(int unit) { return unit >= 32 && unit < 127; }

    static QCollator ignoring_case(QCollator collator)
    {
        collator.setCaseSensitivity(Qt::CaseInsensitive);
        return collator;
    }

    // The letter under an accent; the character itself when it is no accented letter.
    static QString base_of(QChar c)
    {
        QString base(c);
        while (base.front().decompositionTag() == QChar::Canonical) {
            const QString parts = base.front().decomposition();
            const bool accented = parts.size() > 1
                && std::all_of(parts.begin() + 1, parts.end(), [](QChar part) { return part.isMark(); });
            if (!accented)
                break;
            base = parts.left(1);
        }
        return base;
    }

    void assign(const std::vector<bool>& seen, const QCollator& collator)
    {
        std::vector<Letter> letters;
        const QString probe = QStringLiteral("a");
        for (int unit = 0; unit < 65536; ++unit) {
            const QChar c = QChar(char16_t(unit));
            if (!seen[size_t(unit)] || c.isMark())
                continue;
            const QString base = base_of(c);
            const bool counts = collator.compare(probe + base, probe) != 0;
            if (counts)
                letters.push_back({base, char16_t(unit)});
        }
        std::sort(letters.begin(), letters.end(),
                  [&](const Letter& a, const Letter& b) { return collator.compare(a.base, b.base) < 0; });
        for (size_t i = 0; i < letters.size(); ++i) {
            if (i == 0 || collator.compare(letters[i - 1].base, letters[i].base) != 0)
                ++m_count;
            m_ranks[letters[i].unit] = quint16(m_count);
        }
    }

    std::vector<quint16> m_ranks;
    int m_count = 0;
    bool m_is_ascii = true;
};

// Asking takes some thousand comparisons, so the last language's answer is kept.
bool ranks_tell_all_of_ascii(const QCollator& collator)
{
    thread_local std::optional<std::pair<QLocale, bool>> known;
    if (!known || known->first != collator.locale())
        known.emplace(collator.locale(), RankTable(collator).tells_all(collator));
    return known->second;
}

struct Entry {
    quint64 prefix = 0;
    quint32 begin = 0;
    quint32 size = 0;
    int row = 0;
};

// All keys one behind the other, and for each its eight bytes behind what all keys share, as a number.
class KeyStore {
public:
    KeyStore(const std::vector<QString>& texts, const RankTable& ranks)
    {
        m_entries.resize(texts.size());
        for (size_t i = 0; i < texts.size(); ++i) {
            m_entries[i].row = int(i);
            m_entries[i].begin = quint32(m_bytes.size());
            for (const QChar c : texts[i])
                append(ranks.rank(c), ranks.is_wide());
            m_entries[i].size = quint32(m_bytes.size()) - m_entries[i].begin;
        }
        m_bytes.resize(m_bytes.size() + 8, 0);
        m_shared = shared_size();
        for (Entry& entry : m_entries)
            entry.prefix = prefix_of(entry);
    }

    std::vector<Entry>& entries() { return m_entries; }

    int compare(const Entry& a, const Entry& b) const
    {
        if (a.prefix != b.prefix)
            return a.prefix < b.prefix ? -1 : 1;
        const int order = std::memcmp(&m_bytes[a.begin], &m_bytes[b.begin], std::min(a.size, b.size));
        return order != 0 ? order : int(a.size) - int(b.size);
    }

private:
    void append(quint16 rank, bool wide)
    {
        if (rank == 0)
            return;
        if (wide)
            m_bytes.push_back(uchar(rank >> 8));
        m_bytes.push_back(uchar(rank & 0xff));
    }

    quint32 shared_size() const
    {
        quint32 shared = m_entries.empty() ? 0 : m_entries.front().size;
        for (const Entry& entry : m_entries) {
            shared = std::min(shared, entry.size);
            const uchar* first = &m_bytes[m_entries.front().begin];
            shared = quint32(std::mismatch(first, first + shared, &m_bytes[entry.begin]).first - first);
        }
        return shared;
    }

    quint64 prefix_of(const Entry& entry) const
    {
        quint64 prefix = 0;
        const quint32 end = std::min(entry.size, m_shared + 8);
        for (quint32 i = m_shared; i < m_shared + 8; ++i)
            prefix = prefix << 8 | (i < end ? m_bytes[entry.begin + i] : 0);
        return prefix;
    }

    std::vector<uchar> m_bytes;
    std::vector<Entry> m_entries;
    quint32 m_shared = 0;
};

std::vector<int> collated_order(const std::vector<QString>& texts, bool ascending, const QCollator& collator)
{
    std::vector<QCollatorSortKey> keys;
    keys.reserve(texts.size());
    for (const QString& text : texts)
        keys.push_back(collator.sortKey(text));
    std::vector<int> order(texts.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        const int c = keys[size_t(a)].compare(keys[size_t(b)]);
        return ascending ? c < 0 : c > 0;
    });
    return order;
}

} // namespace

QCollator reading_collator()
{
    const QLocale locale;
    return QCollator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
}

std::vector<int> text_order(const std::vector<QString>& texts, bool ascending, const QCollator& collator)
{
    const RankTable ranks(texts, collator);
    KeyStore keys(texts, ranks);
    std::vector<Entry>& entries = keys.entries();
    std::sort(entries.begin(), entries.end(), [&](const Entry& a, const Entry& b) {
        int c = keys.compare(a, b);
        if (c == 0 && texts[size_t(a.row)] != texts[size_t(b.row)])
            c = collator.compare(texts[size_t(a.row)], texts[size_t(b.row)]);
        if (c == 0)
            return a.row < b.row;
        return ascending ? c < 0 : c > 0;
    });

    // Ranks know nothing of letter pairs that a language sorts as one letter, nor of letters that stand for two. One
    // look at each pair of neighbours finds that out.
    const bool is_sure = ranks.is_ascii() && ranks_tell_all_of_ascii(collator);
    for (size_t i = 1; i < entries.size() && !is_sure; ++i) {
        const QString& before = texts[size_t(entries[i - 1].row)];
        const QString& after = texts[size_t(entries[i].row)];
        const int c = before == after ? 0 : collator.compare(before, after);
        if (ascending ? c > 0 : c < 0)
            return collated_order(texts, ascending, collator);
    }
    std::vector<int> order(entries.size());
    std::transform(entries.begin(), entries.end(), order.begin(), [](const Entry& entry) { return entry.row; });
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
