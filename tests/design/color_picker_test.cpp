#include "support/editor_fixture.h"

#include "page_base/pop_dlg_color.h"
#include "widgets/button_st.h"
#include "widgets/color_swatch.h"
#include "widgets/super_edit.h"

#include <QTest>

namespace tarn::test {

namespace {

enum Id : int {
    id_ok = 1,
    id_cancel = 2,
    id_pick = 3,
    id_red = 6397,
    id_green = 6401,
    id_blue = 6405,
    id_alpha = 6411
};

/// What a user finds in the open dialog.
class OpenPicker {
public:
    explicit OpenPicker(QDialog& dialog) : m_page(*dialog.findChild<CChildDlg*>())
    {
        dialog.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }

    CSuperEdit& edit(int id) { return *dynamic_cast<CSuperEdit*>(m_page.control(id)); }
    CColorSwatch& swatch() { return *dynamic_cast<CColorSwatch*>(m_page.control(6464)); }
    void type(int id, const QString& text)
    {
        edit(id).setFocus();
        edit(id).selectAll();
        QTest::keyClicks(&edit(id), text);
    }
    void click(int id) { dynamic_cast<CButtonST*>(m_page.control(id))->click(); }
    std::vector<int> argb()
    {
        std::vector<int> numbers;
        for (const int id : {id_alpha, id_red, id_green, id_blue})
            numbers.push_back(int(edit(id).get_pos()));
        return numbers;
    }

private:
    CChildDlg& m_page;
};

class ColorPicker : public testing::Test {
protected:
    int run(CPopDlgColor& picker, const std::function<void(OpenPicker)>& use)
    {
        m_answers.dialogs.push_back([&](QDialog& dialog) { use(OpenPicker(dialog)); });
        return picker.do_modal(nullptr);
    }
    QueuedAnswers m_answers;
};

TEST_F(ColorPicker, shows_its_colour_and_answers_what_was_typed)
{
    CPopDlgColor picker(0x80ff0000);
    const int result = run(picker, [](OpenPicker open) {
        EXPECT_EQ(open.argb(), (std::vector<int>{128, 255, 0, 0}));
        EXPECT_EQ(open.swatch().argb(), 0x80ff0000u);
        open.type(id_alpha, u"1"_s);
        open.type(id_green, u"2"_s);
        EXPECT_EQ(open.swatch().argb(), 0x01ff0200u);
        open.click(id_ok);
    });
    EXPECT_EQ(result, 1);
    EXPECT_EQ(picker.color(), 0x01ff0200u);
    EXPECT_EQ(m_answers.texts, QStringList{u"选择颜色"_s});
}

TEST_F(ColorPicker, holds_numbers_to_the_range_and_cuts_fractions)
{
    CPopDlgColor picker(0xff102030);
    run(picker, [](OpenPicker open) {
        open.type(id_red, u"300"_s);
        open.type(id_green, u"-7"_s);
        open.type(id_blue, u"12.9"_s);
        open.type(id_alpha, u"254.999"_s);
        EXPECT_EQ(open.argb(), (std::vector<int>{254, 255, 0, 12}));
        open.edit(id_red).setFocus();
        EXPECT_EQ(open.edit(id_alpha).text(), u"254"_s);
        open.type(id_red, u"-"_s); // Not a number yet: the last one stays.
        QTest::keyClick(&open.edit(id_red), Qt::Key_Return);
    });
    EXPECT_EQ(picker.result(), 1) << "Enter is OK";
    EXPECT_EQ(picker.color(), 0xfeff000cu);
}

TEST_F(ColorPicker, the_systems_chooser_never_changes_alpha)
{
    CPopDlgColor picker(0x00123456);
    m_answers.colors = {QColor(200, 100, 50, 77), std::nullopt};
    run(picker, [&](OpenPicker open) {
        open.click(id_pick);
        EXPECT_EQ(open.argb(), (std::vector<int>{0, 200, 100, 50}));
        EXPECT_EQ(open.swatch().argb(), 0x00c86432u);
        open.click(id_pick);
        EXPECT_EQ(open.argb(), (std::vector<int>{0, 200, 100, 50}));
        open.click(id_ok);
    });
    EXPECT_EQ(picker.color(), 0x00c86432u);
    EXPECT_EQ(m_answers.texts.mid(1), QStringList({u"#ff123456"_s, u"#ffc86432"_s})) << "it begins with the colour";
}

TEST_F(ColorPicker, cancel_and_escape_are_not_ok)
{
    for (const bool by_key : {false, true}) {
        CPopDlgColor picker(0xff000000);
        const int result = run(picker, [by_key](OpenPicker open) {
            open.type(id_red, u"9"_s);
            by_key ? QTest::keyClick(&open.edit(id_red), Qt::Key_Escape) : open.click(id_cancel);
        });
        EXPECT_EQ(result, 2);
    }
}

} // namespace

} // namespace tarn::test
