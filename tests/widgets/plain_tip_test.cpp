#include "widgets/plain_tip.h"

#include <QTextDocument>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// What a person reads in a tool tip of `text`.
QString read_in_tip(const QString& text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    QTextDocument shown;
    shown.setHtml(text);
    return shown.toPlainText();
}

} // namespace

TEST(PlainTip, shows_names_as_they_stand)
{
    for (const QString& name : {u"<b>Exit</b>"_s, u"<img src=\"/etc/x.png\">"_s, u"a < b > c"_s, u"Two <i>\nlines"_s,
                                u"Save & Quit"_s, u"near <eof>"_s, u"  &lt;b&gt; "_s})
        EXPECT_EQ(read_in_tip(tarn::plain_tip(name)), name) << name.toStdString();
    EXPECT_NE(read_in_tip(u"<b>Exit</b>"_s), u"<b>Exit</b>"_s);
}
