// What a row can say beyond naming a control and an attribute, on pages of the tests' own.

#include "support/editor_fixture.h"

#include "animation/animation_scene.h"
#include "animation/timebar.h"
#include "core/authored.h"
#include "core/field.h"
#include "core/res_handle_man.h"
#include "frame/filedlg.h"
#include "gui_core/control_state.h"
#include "gui_core/dialog_state.h"
#include "page_base/row_mark.h"
#include "page_base/table_page.h"
#include "script/config_scene.h"
#include "support/files.h"
#include "widgets/super_edit.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace tarn::test {

namespace {

const SelectedControls lists{DXUT_CONTROL_LISTBOX};

class BindingKit : public Editor {
protected:
    void SetUp() override
    {
        start();
        m_home = core().create_dialog({0, 0, 400, 300});
        for (int i = 0; i < 3; ++i)
            m_controls.push_back(core().create_control(DXUT_CONTROL_BUTTON, m_home, QRectF(10 * i, 0, 60, 20)));
        select({0, 1, 2});
    }
    void TearDown() override
    {
        delete m_frame.takeCentralWidget(); // Leaving a text is told to the journal, which goes with the plug-in.
        Editor::TearDown();
    }
    void select(std::initializer_list<int> which)
    {
        core().ClearCtrlSelection();
        for (const int index : which)
            core().SelectControl(m_controls[std::size_t(index)], true);
        tell();
    }
    void tell()
    {
        m_world.broadcast(ui_selection_changed);
        if (m_page)
            m_page->update_ui(ui_selection_changed);
        m_codes.clear();
    }
    /// Makes a page from `rows` and a form with these widgets, class after number.
    void make(std::span<const FieldRow> rows, const std::vector<std::pair<QString, int>>& widgets,
              const Target& target = selected_controls)
    {
        QString form = u"<ui version=\"4.0\"><class>Form</class><widget class=\"QWidget\" name=\"Form\">"
                       u"<layout class=\"QVBoxLayout\" name=\"box\">"_s;
        for (const auto& [kind, number] : widgets)
            form += u"<item><widget class=\"%1\" name=\"id_%2\"/></item>"_s.arg(kind).arg(number);
        QDir(m_folder.path()).mkpath(u"templates"_s);
        put(m_folder.filePath(u"templates/9001_Form.ui"_s), (form + u"</layout></widget></ui>"_s).toUtf8());
        m_entry = {.class_name = "Form", .template_id = 9001, .target = &target, .rows = rows};
        const CResHandleMan guard(m_folder.path());
        m_page = make_page(m_entry, &m_frame);
        m_page->on_world_created(&m_world);
        m_world.on_broadcast = [this](int code) {
            m_codes.push_back(code);
            m_page->update_ui(code);
        };
        m_frame.setCentralWidget(m_page);
        m_frame.show();
        m_frame.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_frame));
        tell();
        m_scene->journal().clear();
    }
    template <class Widget>
    Widget& at(int id)
    {
        return *qobject_cast<Widget*>(m_page->control(id));
    }
    void type(int id, const QString& text)
    {
        auto* line = m_page->control(id)->findChild<QLineEdit*>();
        if (!line)
            line = &at<QLineEdit>(id);
        m_page->control(id)->setFocus();
        line->selectAll();
        QTest::keyClicks(line, text);
    }
    void enter(int id, const QString& text)
    {
        type(id, text);
        QTest::keyClick(m_page->control(id), Qt::Key_Return);
    }
    std::vector<float> widths() const
    {
        std::vector<float> all;
        for (const CDXUTControl* control : m_controls)
            all.push_back(control->width());
        return all;
    }

    QTemporaryDir m_folder;
    PageEntry m_entry{};
    CBoundPage* m_page = nullptr;
    CDXUTDialog* m_home = nullptr;
    std::vector<CDXUTControl*> m_controls;
};

constexpr FieldKey width = key<&ControlState::width>;

/// Half a pixel is 1 in the widget.
Value doubled(const ModelObject&, const Value& stored, Part)
{
    return std::get<double>(stored) * 2;
}
Value halved(const ModelObject&, const Value& shown, Part)
{
    return std::get<double>(shown) / 2;
}
bool shows_decimals = false;
const char* format_now()
{
    return shows_decimals ? "%.1f" : "%.0f";
}
Limits by_height(const ModelObject& current)
{
    return {0, 10 * static_cast<const CDXUTControl&>(current).height()};
}
QString no_thirteen(const ModelObject&, const Value& value)
{
    return value == Value(13.0) ? u"not 13"_s : QString();
}
bool is_visible(const ModelObject& current)
{
    return static_cast<const CDXUTControl&>(current).GetVisible();
}
std::vector<ChoiceItem> controls_of(CGuiPlugScene&, const ModelObject& object)
{
    std::vector<ChoiceItem> items;
    for (const CDXUTControl* control : static_cast<const CDXUTControl&>(object).dialog()->controls())
        items.push_back({QString::number(control->id()), control->name()});
    return items;
}
QString new_text()
{
    return u"New Item"_s;
}
filter_man any_file()
{
    filter_man filter;
    filter.add_filter(u"any"_s, u"*.*"_s);
    return filter;
}

} // namespace

TEST_F(BindingKit, a_change_goes_by_each_objects_own_number_as_one_step)
{
    constexpr FieldRow rows[] = {{.control = 10, .field = width}};
    make(rows, {{u"CSuperEdit"_s, 10}});
    for (int i = 0; i < 3; ++i)
        m_controls[std::size_t(i)]->SetSize(float(100 * i), 20);
    tell();
    m_scene->journal().clear();
    enter(10, u"+10"_s);
    EXPECT_EQ(widths(), (std::vector<float>{10, 110, 210}));
    EXPECT_EQ(m_scene->journal().step_count(), 1u);
    EXPECT_FALSE(at<CSuperEdit>(10).value()) << "they still disagree";
    enter(10, u"-=500"_s);
    EXPECT_EQ(widths(), (std::vector<float>{0, 0, 0})) << "each held to the range";
    ASSERT_TRUE(m_scene->journal().undo() && m_scene->journal().undo());
    EXPECT_EQ(widths(), (std::vector<float>{0, 100, 200}));
}

TEST_F(BindingKit, the_keys_for_undo_are_the_programs_in_texts_and_numbers)
{
    constexpr FieldRow rows[] = {{.control = 10, .field = width},
                                 {.control = 11, .field = key<&ControlState::name>},
                                 {.control = 12, .field = key<&StaticState::text>}};
    make(rows, {{u"CSuperEdit"_s, 10}, {u"QLineEdit"_s, 11}, {u"QPlainTextEdit"_s, 12}});
    QAction undo;
    undo.setShortcut(QKeySequence::Undo);
    m_frame.addAction(&undo);
    QObject::connect(&undo, &QAction::triggered, [this] {
        EXPECT_TRUE(m_scene->journal().undo());
        m_world.broadcast(ui_full_refresh);
    });
    for (const int id : {10, 11, 12}) {
        QWidget* widget = m_page->control(id);
        const auto shown = [&] {
            auto* text = qobject_cast<QPlainTextEdit*>(widget);
            auto* line = qobject_cast<QLineEdit*>(widget);
            return text ? text->toPlainText() : line ? line->text() : widget->findChild<QLineEdit*>()->text();
        };
        const QString before = shown();
        m_scene->journal().clear();
        for (const auto& typed : {u"12"_s, u"34"_s}) {
            widget->setFocus();
            QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(widget, typed);
            m_frame.setFocus();
        }
        EXPECT_EQ(m_scene->journal().step_count(), 2u) << id;
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(shown(), u"12"_s) << id;
        EXPECT_EQ(m_scene->journal().position(), 1u);
        QTest::keyClick(widget, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(shown(), before) << id;
        undo.setEnabled(false); // As it is when there is nothing to undo.
        QTest::keyClick(widget, Qt::Key_Z, Qt::ControlModifier);
        undo.setEnabled(true);
        EXPECT_EQ(shown(), before) << "the field's own undo writes nothing";
        EXPECT_EQ(m_scene->journal().position(), 0u);
    }
}

TEST_F(BindingKit, ranges_conversions_and_conditions_come_from_the_object)
{
    constexpr FieldRow rows[] = {{.control = 10,
                                  .field = width,
                                  .shows = Shows::Current,
                                  .conversion = {.shown = doubled, .stored = halved, .format = format_now},
                                  .limits = by_height,
                                  .enabled_if = is_visible}};
    make(rows, {{u"CSuperEdit"_s, 10}});
    auto& edit = at<CSuperEdit>(10);
    EXPECT_EQ(edit.text(), u"120"_s);
    EXPECT_EQ(edit.get_max(), 200);
    enter(10, u"150"_s);
    EXPECT_EQ(widths(), (std::vector<float>{75, 75, 75}));
    enter(10, u"*2"_s);
    EXPECT_EQ(widths(), (std::vector<float>{100, 100, 100})) << "held to the range of what is shown";
    m_controls[2]->SetSize(60, 50);
    shows_decimals = true;
    tell();
    EXPECT_EQ(edit.get_max(), 500);
    EXPECT_EQ(edit.text(), u"120.0"_s);
    shows_decimals = false;
    m_controls[2]->SetVisible(false);
    tell();
    EXPECT_FALSE(edit.isEnabled());
}

TEST_F(BindingKit, a_veto_and_a_refusal_write_nothing_and_say_why)
{
    constexpr FieldRow rows[] = {{.control = 10, .field = width, .gate = Gate::OnEnter, .veto = no_thirteen}};
    make(rows, {{u"CSuperEdit"_s, 10}});
    m_answers.buttons = {boxes::Button::Ok};
    enter(10, u"13"_s);
    EXPECT_EQ(m_answers.texts, QStringList{u"not 13"_s});
    EXPECT_EQ(widths(), (std::vector<float>{60, 60, 60}));
    EXPECT_EQ(at<CSuperEdit>(10).get_pos(), 60);
    EXPECT_EQ(m_scene->journal().step_count(), 0u);
    enter(10, u"+1"_s);
    EXPECT_EQ(widths(), (std::vector<float>{61, 61, 61}));
    type(10, u"+1"_s);
    m_frame.setFocus();
    EXPECT_EQ(widths(), (std::vector<float>{61, 61, 61})) << "left without Enter";

    // The root dialog has no frame; the other one must not get it either.
    constexpr FieldRow flags[] = {{.control = 10, .field = key<&DialogState::frame_shown>}};
    make(flags, {{u"QCheckBox"_s, 10}}, selected_dialogs);
    ASSERT_TRUE(m_home->set_property(*m_home->fields().find("frame_shown"), false));
    core().ClearDialogSelection();
    core().SelectDialog(m_home, true);
    core().SelectDialog(core().GetRootDialog(), true);
    tell();
    m_scene->journal().clear();
    m_answers.buttons = {boxes::Button::Ok};
    at<QCheckBox>(10).click();
    EXPECT_TRUE(m_answers.buttons.empty()) << "one box";
    EXPECT_EQ(m_home->property(*m_home->fields().find("frame_shown")), Value(false));
    EXPECT_FALSE(at<QCheckBox>(10).isChecked());
    EXPECT_EQ(m_scene->journal().step_count(), 0u);
    EXPECT_TRUE(m_codes.empty());
}

TEST_F(BindingKit, parts_of_colours_are_written_apart)
{
    constexpr FieldRow rows[] = {{.control = 10, .field = key<&ControlState::color_tag>, .part = channel(24)},
                                 {.control = 11, .field = key<&ControlState::color_tag>, .part = channel(8)}};
    make(rows, {{u"CSuperEdit"_s, 10}, {u"CSuperEdit"_s, 11}});
    ASSERT_TRUE(m_controls[0]->set_property(*m_controls[0]->fields().find("color_tag"), qint64(0xff112233)));
    tell();
    EXPECT_EQ(at<CSuperEdit>(10).get_pos(), 255) << "of this they all have as much";
    EXPECT_FALSE(at<CSuperEdit>(11).value());
    enter(11, u"300"_s);
    EXPECT_EQ(m_controls[0]->color_tag(), 0xff11ff33u);
    enter(10, u"0"_s);
    EXPECT_EQ(m_controls[0]->color_tag(), 0x0011ff33u);
    EXPECT_EQ(m_controls[2]->color_tag(), 0x00ffffffu);
}

TEST_F(BindingKit, choices_paths_and_lists_of_texts_have_rows)
{
    constexpr FieldRow rows[] = {
        {.control = 10, .field = key<&ControlState::name>, .choices = controls_of},
        {.control = 11, .field = key<&ControlState::name>, .opener = 12, .files = any_file},
    };
    make(rows, {{u"QComboBox"_s, 10}, {u"QLineEdit"_s, 11}, {u"QPushButton"_s, 12}});
    select({0});
    auto& combo = at<QComboBox>(10);
    EXPECT_EQ(combo.count(), 4);
    EXPECT_EQ(combo.currentIndex(), 3) << "what is no choice is listed last";
    QTest::keyClick(&combo, Qt::Key_Up);
    EXPECT_EQ(m_controls[0]->name(), QString::number(m_controls[2]->id()));
    EXPECT_EQ(combo.count(), 3);
    m_answers.files = {u"/tmp/some file.png"_s, QString()};
    at<QPushButton>(12).click();
    EXPECT_EQ(m_controls[0]->name(), u"/tmp/some file.png"_s);
    at<QPushButton>(12).click();
    EXPECT_EQ(m_controls[0]->name(), u"/tmp/some file.png"_s) << "cancelled";

    m_controls.push_back(core().create_control(DXUT_CONTROL_LISTBOX, m_home, QRectF(0, 0, 60, 60)));
    constexpr FieldRow items[] = {
        {.control = 10,
         .field = key<&ListBoxState::items>,
         .scope = Scope::Current,
         .list = {.edit = 11, .add = 12, .remove = 13, .new_text = new_text, .chosen = key<&ListBoxState::selected>}}};
    make(items, {{u"QListWidget"_s, 10}, {u"QLineEdit"_s, 11}, {u"QPushButton"_s, 12}, {u"QPushButton"_s, 13}}, lists);
    select({3});
    const auto held = [this](const char* name) { return m_controls[3]->property(*m_controls[3]->fields().find(name)); };
    at<QPushButton>(12).click();
    at<QPushButton>(12).click();
    EXPECT_EQ(held("items"), Value(QStringList({u"New Item"_s, u"New Item"_s})));
    EXPECT_EQ(held("selected"), Value(qint64(1)));
    EXPECT_EQ(at<QLineEdit>(11).selectedText(), u"New Item"_s);
    QTest::keyClicks(&at<QLineEdit>(11), u"b"_s);
    at<QListWidget>(10).setCurrentRow(0);
    EXPECT_EQ(held("selected"), Value(qint64(0))) << "the control's choice follows";
    QTest::keyClicks(&at<QLineEdit>(11), u"a"_s);
    EXPECT_EQ(held("items"), Value(QStringList({u"a"_s, u"b"_s})));
    at<QPushButton>(13).click();
    EXPECT_EQ(held("items"), Value(QStringList(u"b"_s)));
    EXPECT_EQ(at<QListWidget>(10).count(), 1);
}

TEST_F(BindingKit, a_mixed_list_of_texts_stays_a_list)
{
    constexpr FieldRow rows[] = {{.control = 10, .field = key<&ListBoxState::items>}};
    const FieldBase* items = nullptr;
    for (const QStringList& texts : {QStringList(u"a"_s), QStringList(u"b"_s)}) {
        m_controls.push_back(core().create_control(DXUT_CONTROL_LISTBOX, m_home, QRectF(0, 0, 60, 60)));
        items = m_controls.back()->fields().find("items");
        ASSERT_TRUE(m_controls.back()->set_property(*items, texts));
    }
    make(rows, {{u"QPlainTextEdit"_s, 10}}, lists);
    select({3, 4});
    EXPECT_EQ(at<QPlainTextEdit>(10).toPlainText(), QString());
    QTest::keyClicks(&at<QPlainTextEdit>(10), u"x"_s);
    QTest::keyClick(&at<QPlainTextEdit>(10), Qt::Key_Return);
    QTest::keyClicks(&at<QPlainTextEdit>(10), u"y"_s);
    EXPECT_EQ(m_controls[3]->property(*items), Value(QStringList({u"x"_s, u"y"_s})));
    EXPECT_EQ(m_controls[4]->property(*items), Value(QStringList({u"x"_s, u"y"_s})));
}

TEST_F(BindingKit, a_row_without_its_control_is_told_with_page_control_and_field)
{
    constexpr FieldRow rows[] = {{.control = 77, .field = width}, {.control = 10, .field = width}};
    m_answers.buttons = {boxes::Button::Ok, boxes::Button::Ok};
    make(rows, {{u"QSlider"_s, 10}});
    ASSERT_EQ(m_answers.texts.size(), 2) << "one is missing, one is of a kind that shows no value";
    for (const auto& named : {u"Form"_s, u"77"_s, u"width"_s})
        EXPECT_TRUE(m_answers.texts[0].contains(named)) << m_answers.texts[0].toStdString();
    EXPECT_TRUE(m_page->field_rows().empty());
}

TEST_F(BindingKit, rows_mark_what_a_timebar_drives_and_edit_its_pose)
{
    VLCMsgIniW::set_language(Language::English);
    constexpr FieldRow rows[] = {{.control = 10, .field = key<&ControlState::x>},
                                 {.control = 11, .field = key<&ControlState::name>}};
    make(rows, {{u"CSuperEdit"_s, 10}, {u"QLineEdit"_s, 11}});
    const auto mark = [&](int id) { return m_page->findChild<RowMark*>(u"mark_id_%1"_s.arg(id)); };
    using Drive = RowMark::Drive;
    CTimebar* bar = m_scene->animation().create_bar(4, u"Intro"_s);
    m_scene->animation().set_editing(true);
    bar->record_selection({m_controls[1]});
    bar->set_current_time(2);
    tell();
    EXPECT_EQ(mark(10)->tells_drive(), Drive::Keys) << "one of the selected is driven";
    EXPECT_EQ(mark(11)->tells_drive(), Drive::None);
    EXPECT_TRUE(mark(10)->toolTip().contains(u"\"Intro\""_s)) << mark(10)->toolTip().toStdString();
    m_scene->journal().clear();
    type(10, u"77"_s);
    m_scene->document().changes().tell();
    EXPECT_EQ(mark(10)->tells_drive(), Drive::Unrecorded);
    EXPECT_EQ(m_scene->journal().step_count(), 1u) << "both keys";
    EXPECT_EQ(m_controls[0]->x(), 77);
    EXPECT_EQ(m_controls[1]->x(), 77);
    EXPECT_EQ(Authored::property(*m_controls[1], *m_controls[1]->fields().find("x")), Value(10.0));

    core().SelectControl(m_controls[1], false);
    tell();
    m_answers.commands.push_back(9);
    m_answers.buttons.push_back(boxes::Button::Ok);
    m_answers.texts.clear();
    mark(10)->clicked();
    EXPECT_EQ(m_answers.texts.last(),
              u"Now: 77\nChanged and not recorded\nTimebar \"Intro\", after the last key, at 0 s\n"
              u"Set by the author: 10\nDefault: 0"_s);
    bar->set_current_time(1);
    m_scene->document().changes().tell();
    EXPECT_EQ(mark(10)->tells_drive(), Drive::Keys);
    m_scene->animation().set_editing(false);
    m_scene->document().changes().tell();
    EXPECT_EQ(mark(10)->tells_drive(), Drive::None);
    m_scene->animation().set_current_bar(nullptr);
}

} // namespace tarn::test
