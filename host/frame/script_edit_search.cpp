#include "script_edit.h"
#include "script_marks.h"

// Searching in the editor of scripts.

bool CScriptEdit::find(const Search& search, bool forward)
{
    if (search.what.isEmpty())
        return false;
    int line = 0;
    int column = 0;
    int end_line = 0;
    int end_column = 0;
    getSelection(&line, &column, &end_line, &end_column);
    // Backwards from the selection's begin, or the same place would be found again.
    if (!forward && hasSelectedText())
        setCursorPosition(line, column);
    return findFirst(search.what, false, search.match_case, search.whole_word, true, forward);
}

bool CScriptEdit::find_here(const Search& search)
{
    if (hasSelectedText()) {
        int line = 0;
        int column = 0;
        int end_line = 0;
        int end_column = 0;
        getSelection(&line, &column, &end_line, &end_column);
        setCursorPosition(line, column);
    }
    return find(search, true);
}

void CScriptEdit::replace_next(const Search& search, const QString& by)
{
    const auto sensitivity = search.match_case ? Qt::CaseSensitive : Qt::CaseInsensitive;
    if (!search.what.isEmpty() && selectedText().compare(search.what, sensitivity) == 0)
        replaceSelectedText(by);
    find(search, true);
}

int CScriptEdit::replace_all(const Search& search, const QString& by)
{
    if (search.what.isEmpty())
        return 0;
    int count = 0;
    beginUndoAction();
    // Without wrapping, so that what was put in is not searched.
    bool found = findFirst(search.what, false, search.match_case, search.whole_word, false, true, 0, 0);
    for (; found; found = findNext()) {
        replace(by);
        ++count;
    }
    endUndoAction();
    return count;
}

CScriptEdit::Places CScriptEdit::show_places(const Search& search)
{
    SendScintilla(SCI_SETINDICATORCURRENT, tarn::place_indicator);
    SendScintilla(SCI_INDICATORCLEARRANGE, 0, long(length()));
    const QByteArray what = search.what.toUtf8();
    Places places;
    if (what.isEmpty())
        return places;
    SendScintilla(SCI_SETSEARCHFLAGS,
                  ulong((search.match_case ? SCFIND_MATCHCASE : 0) | (search.whole_word ? SCFIND_WHOLEWORD : 0)));
    const long selection_begin = SendScintilla(SCI_GETSELECTIONSTART);
    const long selection_end = SendScintilla(SCI_GETSELECTIONEND);
    long from = 0;
    const auto find_next = [&] {
        SendScintilla(SCI_SETTARGETRANGE, ulong(from), long(length()));
        return SendScintilla(SCI_SEARCHINTARGET, ulong(what.size()), what.constData()) >= 0;
    };
    while (find_next()) {
        const long begin = SendScintilla(SCI_GETTARGETSTART);
        from = SendScintilla(SCI_GETTARGETEND);
        SendScintilla(SCI_INDICATORFILLRANGE, ulong(begin), from - begin);
        ++places.count;
        if (begin == selection_begin && from == selection_end)
            places.selected = places.count;
    }
    return places;
}
