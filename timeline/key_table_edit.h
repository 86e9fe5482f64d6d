#pragma once

#include "animation/timebar.h"
#include "key_rows.h"

#include <QString>
#include <QStringList>

namespace tarn {

QString key_column_title(KeyColumn column);
/// What a cell says. Times are seconds, or frames where the timebar shows them.
QString key_text(const CTimebar& bar, KeyPlace place, KeyColumn column);
/// Objects and variables are what the keys belong to, and the first key of a variable stays where it is.
bool is_key_editable(KeyPlace place, KeyColumn column);

/// Writes `text` as time, value or ease of all these keys, in one step of undo: a number, a sum that each key works out
/// from its own ("+10", "*2"), or a value of the variable's type. A time that is no sum
/// is only for a key alone in its variable. Answers where the keys stand then; nothing when nothing was changed.
KeySelection edit_keys(CTimebar& bar, const std::vector<KeyPlace>& keys, KeyColumn column, const QString& text);

/// Lines of cells with tabs between them, as spreadsheets exchange them.
QString text_of_keys(const CTimebar& bar, const std::vector<KeyPlace>& keys);

struct PastedKeys {
    int written = 0;
    QStringList refused{}; ///< lines that are no keys of the timebar's objects
};
/// Writes keys from such lines, in one step of undo. Objects and variables are found by what the table calls them; a key
/// that stands at the time gets the value.
PastedKeys paste_keys(CTimebar& bar, const QString& text);

} // namespace tarn
