#pragma once

#include <QStringView>

namespace tarn {

constexpr qsizetype longest_edited_line = 10'000;  ///< UTF-16 units
constexpr qsizetype longest_edited_text = 100'000; ///< UTF-16 units

/// Whether a field of a window can edit the text. Qt lays out all of what a field holds, and breaking a line takes a time
/// that grows with its length squared: one of a million letters would stand still for minutes.
inline bool can_be_edited(QStringView text)
{
    if (text.size() > longest_edited_text)
        return false;
    for (qsizetype start = 0; text.size() - start > longest_edited_line;) {
        const qsizetype end = text.indexOf(u'\n', start);
        if (end < 0 || end - start > longest_edited_line)
            return false;
        start = end + 1;
    }
    return true;
}

} // namespace tarn
