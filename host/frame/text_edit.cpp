#include "text_edit.h"

#include "core/edit_limit.h"
#include "core/language.h"

#include <QMimeData>
#include <QToolTip>

namespace tarn {

void TextEdit::insertFromMimeData(const QMimeData* source)
{
    const QTextCursor cursor = textCursor();
    QString text = toPlainText();
    text.replace(cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart(), source->text());
    if (can_be_edited(text))
        QPlainTextEdit::insertFromMimeData(source);
    else
        QToolTip::showText(mapToGlobal(cursorRect().bottomLeft()),
                           lang(u"文字太长，不能粘贴到这里。", u"The text is too long for this field."), this);
}

} // namespace tarn
