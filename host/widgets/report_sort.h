#pragma once

#include <QString>

#include <optional>
#include <vector>

class QCollator;

namespace tarn {

/// The order in which rows with these texts stand when sorted: element i is the old index of the row that comes to
/// stand at i. Stable in both directions: equal texts keep their order.
std::vector<int> text_order(const std::vector<QString>& texts, bool ascending, const QCollator& collator);

/// The same by the number that each text begins with. Texts without one stand last in both directions.
std::vector<int> number_order(const std::vector<QString>& texts, bool ascending);

/// The number at the beginning of a text, after blanks, with '.' as the decimal sign; what follows it (a unit) does
/// not matter. Empty when the text does not begin with a finite number.
std::optional<double> leading_number(QStringView text);

/// The collator for texts that people read. A program in the "C" locale sorts as English does instead of by code
/// point, which would put every capital before every small letter.
QCollator reading_collator();

} // namespace tarn
