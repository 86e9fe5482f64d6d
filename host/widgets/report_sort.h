#pragma once

#include <QCollator>
#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace tarn {

/// Sorts texts as people read them, with numbers in them as numbers (Button2 before Button10). It remembers the texts, so
/// that sorting them again costs little.
class TextOrder {
public:
    explicit TextOrder(const QLocale& locale);
    /// The one of all lists, in the program's language: most show texts that another one has sorted before.
    static TextOrder& shared();

    /// The order in which rows with these texts stand when sorted: element i is the old index of the row that comes to
    /// stand at i. Stable in both directions: texts that read the same keep their order.
    std::vector<int> sorted(const std::vector<QString>& texts, bool ascending);

private:
    std::vector<int> ids_of(const std::vector<QString>& texts);
    void rank_new_texts();

    QCollator m_collator;
    QHash<QString, int> m_ids; ///< a number for each text, its place in the next
    std::vector<QCollatorSortKey> m_keys;
    std::vector<int> m_ranks;
    std::vector<int> m_reading_order; ///< ids, sorted
};

/// The same by the number that each text begins with. Texts without one stand last in both directions.
std::vector<int> number_order(const std::vector<QString>& texts, bool ascending);

/// The number at the beginning of a text, after blanks, with '.' as the decimal sign; what follows it (a unit) does
/// not matter. Empty when the text does not begin with a finite number.
std::optional<double> leading_number(QStringView text);

} // namespace tarn
