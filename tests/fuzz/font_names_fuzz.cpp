// The table of texts in a font: it is read within its bounds, and what is read can be shown.

#include "fuzz.h"

#include "gui_scene/font_names.h"

void fuzz(FuzzInput input)
{
    constexpr qsizetype longest = 20'000; // UTF-16 units of each text
    const tarn::FontNotice notice = tarn::font_notice(input.rest());
    for (const QString& text : {notice.copyright, notice.licence, notice.address})
        require(text.size() <= longest && !text.contains(QChar::Null), "a text is short and has no end within it");
}
