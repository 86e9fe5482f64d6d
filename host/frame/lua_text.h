#pragma once

#include <QStringList>
#include <QStringView>

#include <vector>

// Lua texts as their editor sees them: also unfinished ones.

namespace tarn {

struct LuaToken {
    enum Kind { Name, Keyword, Number, String, Comment, Symbol };
    Kind kind;
    qsizetype begin; ///< UTF-16 units from the text's beginning
    qsizetype end;
    /// A string or comment that goes on at its end; one of a single line does until the line is over.
    bool open = false;

    QStringView in(QStringView text) const { return text.mid(begin, end - begin); }
};

std::vector<LuaToken> lua_tokens(QStringView text);
const QStringList& lua_keywords();

/// Whether the last line of `text` leaves a block or a bracket open, so that the next one stands further in.
bool lua_opens_block(QStringView text);

/// When `text` ends with a word or bracket that closes a block and stands alone in its line: where that block was opened.
/// Otherwise -1.
qsizetype lua_block_begin(QStringView text);

} // namespace tarn
