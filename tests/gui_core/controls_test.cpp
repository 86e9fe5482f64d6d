#include "support/gui_fixture.h"

#include "gui_core/control_style.h"
#include "gui_core/dxut_button_st.h"
#include "gui_core/dxut_combo_box.h"
#include "gui_core/dxut_edit_box.h"
#include "gui_core/dxut_info_box.h"
#include "gui_core/dxut_list_box.h"
#include "gui_core/dxut_media.h"
#include "gui_core/dxut_progress.h"
#include "gui_core/dxut_radio_button.h"
#include "gui_core/dxut_scroll_bar.h"
#include "gui_core/dxut_slider.h"
#include "gui_core/gui_input.h"
#include "gui_core/scroll_geometry.h"
#include "gui_core/swf_header.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QStyleHints>
#include <QtEndian>

#include <array>
#include <random>

namespace tarn::test {

namespace {

class ControlsTest : public GuiTest {
protected:
    template <class Control>
    Control* add(int type, const QRectF& rect)
    {
        return control<Control>(m_home, type, rect);
    }
    /// A place inside the control, from its corner, as the mouse meets it.
    QPointF at(const CDXUTControl* control, double x, double y)
    {
        return control->screen_rect().topLeft() + QPointF(x, y);
    }
    void press(QPointF place) { m_input.mouse_pressed(place); }
    void click(QPointF place)
    {
        m_input.mouse_pressed(place);
        m_input.mouse_released(place);
    }

    CDXUTDialog* m_home = dialog({0, 0, 800, 600});
    GuiInput m_input{m_core};
};

TEST_F(ControlsTest, dragging_reaches_both_ends_of_sliders_and_scroll_bars)
{
    auto* slider = add<CDXUTSlider>(DXUT_CONTROL_SLIDER, {20, 20, 200, 20});
    auto* lying = add<CDXUTScrollBar>(DXUT_CONTROL_SCROLLBAR, {20, 60, 200, 20});
    auto* standing = add<CDXUTScrollBar>(DXUT_CONTROL_SCROLLBAR, {300, 60, 20, 200});
    press(at(slider, 100, 10));
    EXPECT_EQ(slider->value(), 50);
    for (const auto& [x, value] : {std::pair(900.0, 100), std::pair(-50.0, 0)}) {
        m_input.mouse_moved(at(slider, x, 10));
        EXPECT_EQ(slider->value(), value);
    }
    m_input.mouse_released(at(slider, 0, 10));
    for (CDXUTScrollBar* bar : {lying, standing}) {
        press(at(bar, 2, 2)); // On the thumb.
        m_input.mouse_moved(at(bar, 900, 900));
        EXPECT_EQ(bar->position(), 100);
        m_input.mouse_moved(at(bar, -900, -900));
        EXPECT_EQ(bar->position(), 0);
        m_input.mouse_released(at(bar, 0, 0));
        click(at(bar, bar == lying ? 190 : 5, bar == lying ? 5 : 190)); // Beside it: a page.
        EXPECT_EQ(bar->position(), 10);
    }
}

TEST_F(ControlsTest, a_scroll_thumb_covers_the_whole_way_and_no_more)
{
    for (const double total : {5.0, 11.0, 1000.0, 1e7}) {
        const ScrollGeometry bar{.track = 200, .total = total, .seen = 10};
        EXPECT_EQ(bar.can_scroll(), total > 10);
        EXPECT_EQ(bar.place_of(0), 0);
        if (!bar.can_scroll())
            continue;
        EXPECT_NEAR(bar.place_of(total - 10) + bar.thumb(), 200, 1e-9);
        EXPECT_GE(bar.thumb(), ScrollGeometry::smallest_thumb);
        EXPECT_NEAR(bar.position_at(bar.place_of((total - 10) / 2)), (total - 10) / 2, 1e-6 * total);
    }
}

TEST_F(ControlsTest, items_are_cut_to_the_limit_of_their_type_and_the_selection_follows_removals)
{
    auto* combo = add<CDXUTComboBox>(DXUT_CONTROL_COMBOBOX, {0, 0, 100, 24});
    auto* list = add<CDXUTListBox>(DXUT_CONTROL_LISTBOX, {0, 40, 100, 200});
    combo->AddItem(QString(300, u'a'));
    list->AddItem(QString(300, u'a'));
    EXPECT_EQ(combo->GetItem(0).size(), 255);
    EXPECT_EQ(list->GetItem(0).size(), 254);
    for (const auto* text : {u"b", u"c", u"d"})
        list->AddItem(QString::fromUtf16(text));
    EXPECT_FALSE(list->SelectItem(4));
    ASSERT_TRUE(list->SelectItem(2));
    EXPECT_TRUE(list->RemoveItem(0));
    EXPECT_EQ(list->GetSelectedItem(), u"c"_s);
    list->SelectItem(2);
    EXPECT_TRUE(list->RemoveItem(2));
    EXPECT_EQ(list->GetSelectedItem(), u"c"_s);
    EXPECT_FALSE(list->RemoveItem(7));
}

TEST_F(ControlsTest, a_list_selects_the_row_under_the_mouse_after_scrolling)
{
    auto* list = add<CDXUTListBox>(DXUT_CONTROL_LISTBOX, {10, 10, 120, 74}); // Three rows.
    for (int i = 0; i < 30; ++i)
        list->AddItem(QString::number(i));
    click(at(list, 20, 4 + 22 + 5));
    EXPECT_EQ(list->GetSelectedIndex(), 1);
    m_input.wheel_turned(at(list, 20, 20), -2);
    click(at(list, 20, 4 + 5));
    EXPECT_EQ(list->GetSelectedIndex(), 6);
    press(at(list, 112, 40)); // The scroll bar selects nothing.
    m_input.mouse_moved(at(list, 112, 500));
    m_input.mouse_released(at(list, 112, 500));
    EXPECT_EQ(list->GetSelectedIndex(), 6);
    click(at(list, 20, 4 + 5));
    EXPECT_EQ(list->GetSelectedIndex(), 27);
}

TEST_F(ControlsTest, a_combo_box_drops_its_list_over_everything_and_opens_upwards_at_the_bottom)
{
    auto* combo = add<CDXUTComboBox>(DXUT_CONTROL_COMBOBOX, {10, 10, 120, 24});
    auto* below = add<CDXUTCheckBox>(DXUT_CONTROL_CHECKBOX, {10, 34, 120, 60});
    for (int i = 0; i < 3; ++i)
        combo->AddItem(QString::number(i));
    click(at(combo, 20, 10));
    ASSERT_TRUE(combo->is_dropped());
    click(at(combo, 20, 24 + 22 + 5));
    EXPECT_EQ(combo->GetSelectedIndex(), 1);
    EXPECT_FALSE(combo->is_dropped());
    EXPECT_FALSE(below->GetChecked()) << "the click went through the list";
    click(at(combo, 20, 10));
    click(at(combo, 400, 300)); // Beside it.
    EXPECT_FALSE(combo->is_dropped());
    EXPECT_EQ(combo->GetSelectedIndex(), 1);

    combo->SetLocation(10, 660);
    click(at(combo, 20, 10));
    EXPECT_LT(combo->popup_rect().bottom(), combo->rect().top() + 1);
    m_core.remove_control(combo);
    EXPECT_FALSE(m_core.controls().empty());
    EXPECT_EQ(m_core.live().popup, nullptr);
}

class EditBoxTest : public ControlsTest {
protected:
    void SetUp() override
    {
        m_box->SetText(u""_s);
        click(at(m_box, 20, 12));
    }
    void keys(std::initializer_list<Qt::Key> all, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        for (const Qt::Key key : all)
            m_input.key_pressed(key, modifiers);
    }
    void type(const QString& text, const QString& preedit = {}) { m_input.text_typed(text, preedit); }

    CDXUTEditBox* m_box = add<CDXUTEditBox>(DXUT_CONTROL_EDITBOX, {10, 10, 200, 24});
};

TEST_F(EditBoxTest, editing_never_stops_inside_a_character)
{
    const QString family = u"👨‍👩‍👧"_s;
    const QString accent = u"e\u0301"_s;
    type(u"a"_s + family + accent);
    keys({Qt::Key_Backspace});
    EXPECT_EQ(m_box->text(), u"a"_s + family);
    keys({Qt::Key_Left});
    EXPECT_EQ(m_box->editor().caret(), 1);
    keys({Qt::Key_Delete});
    EXPECT_EQ(m_box->text(), u"a"_s);
}

TEST_F(EditBoxTest, selection_clipboard_and_words_work_as_in_any_field)
{
    type(u"one two three"_s);
    keys({Qt::Key_Left}, Qt::ControlModifier);
    keys({Qt::Key_Left}, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(m_box->editor().selected_text(), u"two "_s);
    keys({Qt::Key_X}, Qt::ControlModifier);
    EXPECT_EQ(m_box->text(), u"one three"_s);
    keys({Qt::Key_End});
    keys({Qt::Key_V}, Qt::ControlModifier);
    EXPECT_EQ(m_box->text(), u"one threetwo "_s);
    QGuiApplication::clipboard()->setText(u"line\nbreak\u0007"_s);
    keys({Qt::Key_A}, Qt::ControlModifier);
    keys({Qt::Key_V}, Qt::ControlModifier);
    EXPECT_EQ(m_box->text(), u"line break"_s);
}

TEST_F(EditBoxTest, numbers_only_takes_what_may_become_a_number_and_read_only_nothing)
{
    (void)set(*m_box, "numbers_only", true);
    type(u"-"_s);
    type(u"12x"_s);
    type(u"1"_s);
    type(u".5"_s);
    type(u"."_s);
    type(u"-"_s);
    EXPECT_EQ(m_box->text(), u"-1.5"_s);
    QGuiApplication::clipboard()->setText(u"3 apples"_s);
    keys({Qt::Key_A}, Qt::ControlModifier);
    keys({Qt::Key_V}, Qt::ControlModifier);
    EXPECT_EQ(m_box->text(), u"-1.5"_s) << "pasted all or nothing";
    m_box->SetText(u"a word"_s);
    keys({Qt::Key_End});
    keys({Qt::Key_Backspace});
    EXPECT_EQ(m_box->text(), u"a wor"_s) << "what is there can go";

    (void)set(*m_box, "read_only", true);
    keys({Qt::Key_Z, Qt::Key_X}, Qt::ControlModifier);
    keys({Qt::Key_Backspace, Qt::Key_Delete});
    type(u"1"_s, u"ni"_s);
    EXPECT_EQ(m_box->text(), u"a wor"_s);
    EXPECT_TRUE(m_box->editor().preedit().isEmpty());
    keys({Qt::Key_A, Qt::Key_C}, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"a wor"_s);
    m_box->SetText(u"a script's"_s);
    EXPECT_EQ(m_box->text(), u"a script's"_s);
}

TEST_F(ControlsTest, a_map_is_zoomed_by_its_buttons_the_wheel_and_keys_while_it_runs)
{
    auto* map = add<CDXUTMap>(DXUT_CONTROL_MAP, {200, 100, 100, 100});
    (void)set(*map, "default_scale", 2.0);
    (void)set(*map, "zoom_rate", 1.5);
    (void)set(*map, "zoom_out_x", qint64(60));
    click(at(map, 20, 20));
    EXPECT_DOUBLE_EQ(map->scale(), 3);
    click(at(map, 72, 48));
    click(at(map, 50, 80));
    EXPECT_DOUBLE_EQ(map->scale(), 2) << "a click beside the buttons zooms nothing";
    map->wheel_turned(2);
    EXPECT_DOUBLE_EQ(map->scale(), 4.5);
    m_input.key_pressed(Qt::Key_Minus, Qt::NoModifier);
    EXPECT_DOUBLE_EQ(map->scale(), 3);
    map->wheel_turned(1000);
    EXPECT_DOUBLE_EQ(map->scale(), 100);
    map->wheel_turned(-1);
    EXPECT_LT(map->scale(), 100) << "it does not go on beyond";
    map->reset_run_state();
    EXPECT_DOUBLE_EQ(map->scale(), 2);
}

TEST_F(EditBoxTest, an_input_method_shows_what_it_composes_and_puts_in_what_it_commits)
{
    type(u""_s, u"ni"_s);
    EXPECT_EQ(m_box->text(), u""_s);
    EXPECT_EQ(m_box->editor().preedit(), u"ni"_s);
    EXPECT_FALSE(m_input.caret().isEmpty());
    type(u"你"_s);
    EXPECT_EQ(m_box->text(), u"你"_s);
    EXPECT_TRUE(m_box->editor().preedit().isEmpty());
}

TEST_F(EditBoxTest, the_caret_of_a_long_text_stays_in_sight_and_clicks_find_it)
{
    const QString accents = u"e"_s + QString(400, QChar(0x301));
    m_box->SetText(u"iWi "_s.repeated(500) + accents + QString(500, u'm'));
    const auto is_in_sight = [&] { return m_box->rect().contains(m_box->caret_rect().center()); };
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Left}) {
        keys({key == Qt::Key_Right ? Qt::Key_Home : Qt::Key_End});
        int moves = 0;
        for (int before = -1; before != m_box->editor().caret(); ++moves) {
            before = m_box->editor().caret();
            keys({key});
            ASSERT_TRUE(is_in_sight()) << before;
            if (moves % 50 != 7)
                continue;
            const int caret = m_box->editor().caret();
            click(m_box->caret_rect().center());
            EXPECT_EQ(m_box->editor().caret(), caret);
        }
        EXPECT_EQ(moves, 2000 + 1 + 500 + 1);
    }
    keys({Qt::Key_End});
    m_box->SetText(u"short"_s);
    EXPECT_TRUE(is_in_sight());
    EXPECT_EQ(m_box->editor().caret(), 5);

    // What a million letters cost must not hang on their number.
    QGuiApplication::clipboard()->setText(QString(999'000, u'i'));
    keys({Qt::Key_V, Qt::Key_Backspace, Qt::Key_V}, Qt::ControlModifier);
    EXPECT_TRUE(is_in_sight());
}

TEST_F(EditBoxTest, a_limit_counts_what_is_there_and_a_disabled_field_takes_nothing)
{
    (void)set(*m_box, "max_length", qint64(4));
    type(u"abcdefg"_s);
    EXPECT_EQ(m_box->text(), u"abcd"_s);
    (void)set(*m_box, "enabled", false);
    keys({Qt::Key_Backspace});
    type(u"x"_s);
    EXPECT_EQ(m_box->text(), u"abcd"_s);
}

TEST_F(EditBoxTest, undo_takes_back_word_by_word_and_leaves_what_came_from_outside)
{
    for (const QChar c : u"one two"_s)
        type(c);
    keys({Qt::Key_Backspace, Qt::Key_Backspace});
    keys({Qt::Key_Left}, Qt::ControlModifier | Qt::ShiftModifier);
    type(u"x"_s);
    const QStringList steps{u"one x"_s, u"one t"_s, u"one two"_s, u"one "_s, u""_s};
    for (const QString& step : steps) {
        EXPECT_EQ(m_box->text(), step);
        keys({Qt::Key_Z}, Qt::ControlModifier);
    }
    EXPECT_EQ(m_box->text(), u""_s) << "there is nothing more";
    for (auto step = steps.rbegin() + 1; step != steps.rend(); ++step) {
        keys({Qt::Key_Z}, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(m_box->text(), *step);
    }
    keys({Qt::Key_Z}, Qt::ControlModifier);
    EXPECT_EQ(m_box->editor().selected_text(), u"t"_s) << "the selection comes back too";
    type(u"y"_s);
    keys({Qt::Key_Y}, Qt::ControlModifier);
    EXPECT_EQ(m_box->text(), u"one y"_s) << "what was undone is gone";
    m_box->SetText(u"from a script"_s);
    keys({Qt::Key_Z}, Qt::ControlModifier);
    EXPECT_EQ(m_box->text(), u"from a script"_s);
}

TEST_F(EditBoxTest, any_edits_are_undone_and_redone_exactly)
{
    std::mt19937 random(7);
    std::vector<QString> texts{m_box->text()};
    for (int i = 0; i < 150; ++i) {
        keys({Qt::Key(std::array{Qt::Key_Home, Qt::Key_Left, Qt::Key_Right, Qt::Key_End}[random() % 4])},
             random() % 2 ? Qt::ShiftModifier : Qt::NoModifier);
        if (random() % 3 == 0)
            keys({random() % 2 ? Qt::Key_Backspace : Qt::Key_Delete});
        else
            type(QString(int(random() % 4), QChar(char16_t(u'a' + random() % 26))));
        if (m_box->text() != texts.back())
            texts.push_back(m_box->text());
    }
    for (auto text = texts.rbegin(); text != texts.rend(); ++text) {
        ASSERT_EQ(m_box->text(), *text);
        keys({Qt::Key_Z}, Qt::ControlModifier);
    }
    for (const QString& text : texts) {
        ASSERT_EQ(m_box->text(), text);
        keys({Qt::Key_Y}, Qt::ControlModifier);
    }
}

TEST_F(EditBoxTest, a_double_click_selects_a_word_and_a_trembling_hand_keeps_it)
{
    m_box->SetText(u"one two-three 北京"_s);
    const double at_two = m_box->text_area(m_box->rect()).x() - m_box->rect().x() + 36;
    m_input.mouse_double_clicked(at(m_box, at_two, 12));
    m_input.mouse_moved(at(m_box, at_two + 2, 12));
    m_input.mouse_released(at(m_box, at_two + 2, 12));
    EXPECT_EQ(m_box->editor().selected_text(), u"two"_s);
    m_input.mouse_double_clicked(at(m_box, 190, 12)); // behind the text
    EXPECT_EQ(m_box->editor().selected_text(), u"京"_s);
    m_box->SetText({});
    m_input.mouse_double_clicked(at(m_box, 20, 12));
    EXPECT_FALSE(m_box->editor().has_selection());
}

TEST_F(EditBoxTest, a_password_leaves_its_field_in_no_way)
{
    QGuiApplication::clipboard()->setText(u"kept"_s);
    m_box->SetText(u"open sesame"_s);
    (void)set(*m_box, "password", true);
    keys({Qt::Key_A, Qt::Key_C, Qt::Key_X}, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"kept"_s);
    EXPECT_EQ(m_box->text(), u"open sesame"_s);
    m_input.mouse_double_clicked(at(m_box, 20, 12));
    EXPECT_EQ(m_box->editor().selected_text(), m_box->text()) << "nothing tells where its words end";
    keys({Qt::Key_Home});
    keys({Qt::Key_Right}, Qt::ControlModifier);
    EXPECT_EQ(m_box->editor().caret(), 11);
}

TEST_F(EditBoxTest, the_caret_blinks_and_stays_while_one_types)
{
    const double half = QGuiApplication::styleHints()->cursorFlashTime() / 2000.0;
    ASSERT_GT(half, 0);
    ASSERT_TRUE(set(m_core, "animation_speed", 0.0));
    EXPECT_TRUE(m_core.live().caret_shown);
    EXPECT_FALSE(m_core.advance(half / 2));
    m_core.take_damage();
    EXPECT_TRUE(m_core.advance(half * 1.2));
    EXPECT_FALSE(m_core.live().caret_shown);
    EXPECT_TRUE(m_core.take_damage().contains(m_home->to_screen(m_box->caret_rect()).center()));
    type(u"a"_s);
    EXPECT_TRUE(m_core.live().caret_shown);
    EXPECT_FALSE(m_core.advance(half * 2));
    m_core.set_focused(nullptr);
    EXPECT_FALSE(m_core.advance(half * 3.5)) << "nothing to draw";
}

TEST_F(ControlsTest, progress_texts_fill_their_placeholders)
{
    auto* bar = add<CDXUTProgress>(DXUT_CONTROL_PROGRESS, {0, 0, 200, 20});
    (void)set(*bar, "percent", 12.5);
    (void)set(*bar, "total", qint64(80));
    EXPECT_EQ(bar->shown_text(), u"12.50%"_s);
    (void)set(*bar, "message", u"<num>/<total> (<percent>) <other>"_s);
    (void)set(*bar, "info_display", true);
    EXPECT_EQ(bar->shown_text(), u"10.00/80 (12.50%) <other>"_s);
    (void)set(*bar, "integer_display", true);
    EXPECT_EQ(bar->shown_text(), u"10/80 (12%) <other>"_s);
}

TEST(SwfHeader, tells_what_a_movie_says_and_why_it_cannot_be_read)
{
    // 550 x 400 pixels in twips with 15 bits each, 24 frames a second, 120 frames.
    const QByteArray content = QByteArray::fromHex("7800055f00000fa000") + QByteArray::fromHex("00187800");
    QByteArray length(4, '\0');
    qToLittleEndian(quint32(8 + content.size()), length.data());
    const QByteArray plain = "FWS\x06" + length + content;
    QByteArray packed = qCompress(content).mid(4);
    const QByteArray compressed = "CWS\x06" + length + packed;
    for (const QByteArray& file : {plain, compressed}) {
        const auto header = read_swf_header(file);
        ASSERT_TRUE(header.ok());
        EXPECT_EQ(header.value().version, 6);
        EXPECT_EQ(header.value().size, QSizeF(550, 400));
        EXPECT_EQ(header.value().frame_count, 120);
        EXPECT_EQ(header.value().frame_rate, 24);
        EXPECT_EQ(header.value().compressed, file[0] == 'C');
    }
    const QByteArray no_content = "CWS\x06" + length + "\x78\x9c" + QByteArray("\0\0\0\xff\xff", 5).repeated(1000);
    for (const QByteArray& bad : {QByteArray(), QByteArray("FWS"), QByteArray("PNG and what follows"), plain.left(12),
                                  compressed.left(14), QByteArray("CWS\x06") + length + content, no_content})
        EXPECT_FALSE(read_swf_header(bad).ok());
}

} // namespace

} // namespace tarn::test
