#pragma once

#include <QCollator>
#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace tarn {

/// Sorts texts as people read them in the program's language, with numbers in them as numbers (Button2 before
/// Button10). It remembers the texts, so that sorting them again costs little.
class TextOrder {
public:
    TextOrder();

    /// The order in which rows with these texts stand when sorted: element i is the old index of the row that comes to
    /// stand at i. Stable in both directions: texts that read the same keep their order.
    std::vector<int> sorted(const std::vector<QString>& texts, bool ascending);

private:
    struct Known {
        QString text;
        QCollatorSortKey key;
    };

    void learn(const std::vector<QString>& texts);

    QCollator m_collator;
    std::vector<Known> m_known; ///< sorted
    QHash<QString, int> m_ranks;
};

/// The same by the number that each text begins with. Texts without one stand last in both directions.
std::vector<int> number_order(const std::vector<QString>& texts, bool ascending);

/// The number at the beginning of a text, after blanks, with '.' as the decimal sign; what follows it (a unit) does
/// not matter. Empty when the text does not begin with a finite number.
std::optional<double> leading_number(QStringView text);

} // namespace tarn
