// The editor of command lines.

#include "frame/str_cmd.h"

#include "script/config_scene.h"
#include "support/editor_fixture.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

namespace tarn::test {

namespace {

class StrCmd : public Editor {
protected:
    void SetUp() override
    {
        VLCMsgIniW::set_language(Language::English);
        start();
        auto* label = core().create_control(DXUT_CONTROL_STATIC, core().GetRootDialog(), QRectF(5, 5, 50, 20));
        ASSERT_TRUE(label->set_property(*label->fields().find("name"), u"Label"_s));
        ASSERT_TRUE(m_scene->functions().set_function(u"show"_s, u"-- shows\nlocal life,  mana = ...\nprint(life)"_s));
    }
    QString refusal(const QString& line) { return refusal_of_command(m_world, line); }
    QString edited(const QString& line, const std::function<void(QDialog&)>& edit)
    {
        m_answers.dialogs.push_back(edit);
        QString result = line;
        QString command;
        QStringList parameters;
        g_seperate_cmd_line_with_pars(line, command, parameters);
        g_edit_str_cmd(&m_frame, m_world, get_cmd_id_from_str(command, m_world), command, parameters,
                       {u"life"_s, u"mana"_s}, result);
        return result;
    }
    template <class Widget>
    static Widget& in(const QDialog& dialog, int id)
    {
        return *dialog.findChild<Widget*>(u"id_%1"_s.arg(id));
    }
    static void ok(const QDialog& dialog) { in<QAbstractButton>(dialog, 1).click(); }
};

} // namespace

TEST_F(StrCmd, what_cannot_be_called_is_refused)
{
    for (const char16_t* line :
         {u"show()", u"show(life, mana, 3)", u"print(life)", u"control('Label'):set('text', life .. '!')",
          u"control(\"Label\"):move(life * 2, 3)", u"random()", u"random(1, life)", u"control(name):hide()"})
        EXPECT_EQ(refusal(QString::fromUtf16(line)), QString()) << QString::fromUtf16(line).toStdString();
    struct Case {
        const char16_t* line;
        const char16_t* refusal;
    };
    const Case cases[] = {{u"shows(life)", u"nothing to call"},
                          {u"control('Label')", u"nothing to call"},
                          {u"control('Label'):pop()", u"nothing to call"},
                          {u"control('Labels'):hide()", u"There is no control called 'Labels'"},
                          {u"control():hide()", u"Name the object"},
                          {u"control('Label'):move(1)", u"\"y\" is missing"},
                          {u"control('Label'):move('1', 2)", u"\"x\" cannot be '1'"},
                          {u"control('Label'):hide(1)", u"too many parameters"},
                          {u"message(5)", u"\"text\" cannot be 5"},
                          {u"show(life", u"not closed"},
                          {u"show(life +)", u"unexpected symbol"}};
    for (const Case& c : cases)
        EXPECT_TRUE(refusal(QString::fromUtf16(c.line)).contains(QString::fromUtf16(c.refusal)))
            << QString::fromUtf16(c.line).toStdString() << " -> " << refusal(QString::fromUtf16(c.line)).toStdString();
}

TEST_F(StrCmd, the_editor_has_a_field_for_each_parameter_and_gives_the_line_back)
{
    EXPECT_EQ(edited(u"show(1, mana * 2)"_s,
                     [](QDialog& dialog) {
                         EXPECT_EQ(in<QListWidget>(dialog, 6947).currentItem()->text(), u"show"_s);
                         EXPECT_EQ(in<QLabel>(dialog, 6960).text(), u"life"_s);
                         EXPECT_EQ(in<QComboBox>(dialog, 6971).currentText(), u"mana * 2"_s);
                         EXPECT_EQ(in<QComboBox>(dialog, 6970).count(), 2) << "the variables are offered";
                         EXPECT_TRUE(in<QWidget>(dialog, 6972).isVisibleTo(&dialog)) << "one more";
                         EXPECT_FALSE(in<QWidget>(dialog, 6973).isVisibleTo(&dialog));
                         in<QComboBox>(dialog, 6970).setEditText(u"life"_s);
                         ok(dialog);
                     }),
              u"show(life, mana * 2)"_s);
    m_answers.buttons.push_back(boxes::Button::Ok);
    EXPECT_EQ(edited(u"show(1)"_s,
                     [](QDialog& dialog) {
                         auto& list = in<QListWidget>(dialog, 6947);
                         list.setCurrentItem(list.findItems(u"control:move"_s, Qt::MatchExactly).value(0));
                         in<QLineEdit>(dialog, 6951).setText(u"Label"_s);
                         in<QComboBox>(dialog, 6970).setEditText(u"life"_s);
                         ok(dialog);
                         EXPECT_TRUE(dialog.isVisible()) << "y is missing";
                         in<QComboBox>(dialog, 6971).setEditText(u"3"_s);
                         ok(dialog);
                     }),
              u"control(\"Label\"):move(life, 3)"_s);
    EXPECT_EQ(edited(u"control('Label'):set('text', life)"_s, [](QDialog& dialog) { ok(dialog); }),
              u"control('Label'):set('text', life)"_s);
    EXPECT_EQ(edited(u"f(1, 2, 3, 4, 5, 6, 7, 8, 9)"_s, [](QDialog& dialog) { dialog.reject(); }),
              u"f(1, 2, 3, 4, 5, 6, 7, 8, 9)"_s);
    EXPECT_EQ(edited(u"show(1, 2, 3, 4, 5, 6, 7, 8, {9, 10})"_s, [](QDialog& dialog) { ok(dialog); }),
              u"show(1, 2, 3, 4, 5, 6, 7, 8, {9, 10})"_s)
        << "more than there are fields";
}

} // namespace tarn::test
