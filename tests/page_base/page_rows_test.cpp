// Every row of every page, from the pages' own tables: what the user does in the widget reaches the model and comes back
// by undo. A row that is new is tested without a line here.

#include "support/attributes.h"
#include "support/editor_fixture.h"

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/field.h"
#include "engine/world_edit.h"
#include "engine/world_models.h"
#include "frame/dlg_group.h"
#include "frame/rollup.h"
#include "gui_core/control_type.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "page_base/bound_page.h"
#include "page_base/pop_dlg_color.h"
#include "page_base/value_part.h"
#include "script/config_scene.h"
#include "shell/page_bar.h"
#include "shell/prop_bar.h"
#include "widgets/color_swatch.h"
#include "widgets/super_edit.h"
#include "world/world_scene.h"

#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTest>
#include <QWheelEvent>

namespace tarn::test {

namespace {

constexpr int id_ok = 1; ///< of pages whose edits wait
constexpr int reset_command = 8;
constexpr quint32 new_color = 0x80123456;

class PageRows : public Editor {
protected:
    void SetUp() override
    {
        start();
        m_frame.resize(700, 1400);
        m_frame.show();
        m_frame.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_frame));
        ASSERT_TRUE(m_scene->functions().set_function(u"answer"_s, u""_s).ok());
        m_frame.findChild<CPageBar*>(u"CWorldBar"_s)->show_bar(true);
        for (CMyRollup* rollup : m_frame.findChildren<CMyRollup*>())
            rollup->ExpandAllPages(true);
        for (int i = 0; i < 2; ++i) {
            CDXUTDialog* dialog = core().create_dialog({20 * i, 0, 400, 300});
            m_dialogs.push_back(dialog);
            const FieldBase* texture = dialog->fields().find("bind_texture");
            ASSERT_TRUE(dialog->set_property(*texture, u"screen.png"_s)); // What hangs on it can be edited.
        }
    }
    QList<CBoundPage*> pages() { return m_frame.findChildren<CBoundPage*>(); }
    void tell() { m_world.broadcast(ui_full_refresh); }

    /// Two fresh timebars or what they have; the second is the current one.
    void make_timed(const Target& target)
    {
        CAnimationScene& animation = m_scene->animation();
        animation.set_editing(true);
        m_objects.clear();
        for (int i = 0; i < 2; ++i) {
            CTimebar* bar = animation.create_bar(10, u"one name"_s);
            CTimerObject* object = bar->create_object(TimerObjectType::Control, {m_dialogs.front()->id()});
            CTVar* variable = object->create_var(VarType::Float, u"one name"_s);
            bar->set_current_object(object);
            object->set_current_variable(variable);
            m_objects.push_back(dynamic_cast<const CurrentVariable*>(&target) ? static_cast<ModelObject*>(variable)
                                    : dynamic_cast<const CurrentTimerObject*>(&target)
                                    ? static_cast<ModelObject*>(object)
                                    : static_cast<ModelObject*>(bar));
        }
        m_frame.findChild<CPropBar*>()->group().show_wnd_by_id(CPropBar::page_timer);
    }
    WorldObject* make_object(WorldType type)
    {
        if (type != WorldType::AnimatedModel && type != WorldType::Skeleton)
            return m_world.objects().create(type);
        const QString name = type == WorldType::Skeleton ? u"figure"_s : u"chest"_s;
        auto object = add_world_model(m_world, QStringLiteral(TARN_MODELS "/%1.glb").arg(name), {}, {});
        EXPECT_TRUE(object) << object.status().message().toStdString();
        m_world.models().library().finish();
        return object.value();
    }
    /// Two panels, or what else the target is of; for what a timebar makes of them, one in two timebars.
    void make_world(const SelectedWorldObjects& target)
    {
        WorldScene& world = m_world.objects();
        std::vector<WorldObject*> made;
        for (int i = 0; i < 2; ++i) {
            made.push_back(make_object(target.type().value_or(WorldType::Panel)));
            made.back()->set_name(u"one name"_s);
        }
        select_world_objects(m_world, made);
        m_objects.assign(made.begin(), made.end());
        if (!dynamic_cast<const TimerObjectOfSelection*>(&target))
            return;
        world.create(WorldType::Path);
        for (ModelObject*& object : m_objects) {
            CTimebar* bar = m_scene->animation().create_bar(10);
            object = bar->create_object(TimerObjectType::Panel, {made.back()->id()});
        }
        m_world.broadcast(ui_timebars_changed);
    }
    /// Selects two fresh objects that the row is for.
    void select_for(const CBoundPage& page, const FieldRow& row)
    {
        const Target& target = row.target ? *row.target : page.target();
        if (dynamic_cast<const CurrentTimebar*>(&target)) {
            make_timed(target);
            m_world.broadcast(ui_timebars_changed);
            m_scene->journal().clear();
            return;
        }
        core().ClearCtrlSelection();
        core().ClearDialogSelection();
        if (const auto* of_world = dynamic_cast<const SelectedWorldObjects*>(&target)) {
            make_world(*of_world);
            m_scene->journal().clear();
            return;
        }
        core().selection().menu_editing = dynamic_cast<const CurrentMenu*>(&target);
        if (const auto* controls = dynamic_cast<const SelectedControls*>(&target)) {
            const int type = controls->type() == SelectedControls::any_type ? DXUT_CONTROL_BUTTON : controls->type();
            m_objects.clear();
            for (int i = 0; i < 2; ++i) {
                CDXUTControl* made = core().create_control(type, m_dialogs[std::size_t(i)], QRectF(10, 10, 60, 20));
                ASSERT_NE(made, nullptr) << type;
                (void)set(*made, "name", u"one name"_s);
                core().SelectControl(made, true);
                m_objects.push_back(made);
            }
        } else if (core().selection().menu_editing) {
            const bool items = dynamic_cast<const CurrentMenuItem*>(&target);
            m_objects.clear();
            for (int i = 0; i < 2; ++i) {
                CDXUTMenu* menu = core().create_menu(u"one name"_s);
                CDXUTMenuItem* item = core().create_menu_item(*menu, 0, {.text = u"text"_s});
                (void)item->set_property(*item->fields().find("checkable"), true); // What hangs on it can be edited.
                m_objects.push_back(items ? static_cast<ModelObject*>(item) : menu);
                core().selection().current_menu_item = item;
            }
        } else {
            for (CDXUTDialog* dialog : m_dialogs)
                core().SelectDialog(dialog, true);
            m_objects.assign(m_dialogs.begin(), m_dialogs.end());
        }
        m_world.broadcast(ui_selection_changed);
        m_scene->journal().clear();
    }
    Value held(int object, const FieldRow& row)
    {
        const FieldBase* field = m_objects[std::size_t(object)]->fields().find(row.field);
        return field ? part_of(m_objects[std::size_t(object)]->property(*field), row.part) : Value();
    }
    /// The last selected is the current one.
    Value held_by_current(const FieldRow& row) { return held(int(m_objects.size()) - 1, row); }
    void put(int object, const FieldRow& row, const Value& part)
    {
        ModelObject& target = *m_objects[std::size_t(object)];
        const FieldBase* field = target.fields().find(row.field);
        ASSERT_TRUE(target.set_property(*field, with_part(target.property(*field), row.part, part)));
    }
    /// Does what a user would to change the value; false for a kind of widget that this does not know.
    bool edit(const CBoundPage& page, QWidget& widget, const FieldRow& row)
    {
        widget.setFocus();
        if (row.option) {
            static_cast<QAbstractButton&>(widget).click();
        } else if (auto* box = qobject_cast<QCheckBox*>(&widget)) {
            box->click();
        } else if (auto* number = qobject_cast<CSuperEdit*>(&widget)) {
            const double pos = number->get_pos();
            number->selectAll();
            QTest::keyClicks(number, QString::number(pos < number->get_max() ? pos + 1 : pos - 1));
            QTest::keyClick(number, Qt::Key_Return);
        } else if (auto* line = qobject_cast<QLineEdit*>(&widget)) {
            QTest::keyClicks(line, u"x"_s);
            QTest::keyClick(line, Qt::Key_Return);
        } else if (auto* text = qobject_cast<QPlainTextEdit*>(&widget)) {
            QTest::keyClicks(text, u"x"_s);
        } else if (auto* combo = qobject_cast<QComboBox*>(&widget)) {
            QTest::keyClick(combo, combo->currentIndex() + 1 < combo->count() ? Qt::Key_Down : Qt::Key_Up);
        } else if (auto* swatch = qobject_cast<CColorSwatch*>(&widget)) {
            m_answers.dialogs.push_back([](QDialog& dialog) {
                auto* picker = dialog.findChild<CChildDlg*>();
                for (const auto& [id, shift] : {std::pair{6411, 24}, {6397, 16}, {6401, 8}, {6405, 0}}) {
                    auto* channel = qobject_cast<CSuperEdit*>(picker->control(id));
                    channel->selectAll();
                    QTest::keyClicks(channel, QString::number(new_color >> shift & 0xff));
                }
                dialog.accept();
            });
            swatch->click();
        } else if (qobject_cast<QListWidget*>(&widget)) {
            qobject_cast<QAbstractButton*>(page.control(row.list.add))->click();
        } else {
            return false;
        }
        return true;
    }
    static QString shown(const QWidget& widget)
    {
        if (auto* number = qobject_cast<const CSuperEdit*>(&widget))
            return number->text();
        if (auto* line = qobject_cast<const QLineEdit*>(&widget))
            return line->text();
        if (auto* text = qobject_cast<const QPlainTextEdit*>(&widget))
            return text->toPlainText();
        if (auto* combo = qobject_cast<const QComboBox*>(&widget))
            return combo->currentText();
        if (auto* swatch = qobject_cast<const CColorSwatch*>(&widget))
            return QString::number(swatch->argb(), 16);
        if (auto* list = qobject_cast<const QListWidget*>(&widget))
            return QString::number(list->count());
        if (auto* box = qobject_cast<const QCheckBox*>(&widget))
            return QString::number(box->checkState());
        auto* button = qobject_cast<const QAbstractButton*>(&widget);
        return button && button->isChecked() ? u"on"_s : u"off"_s;
    }
    /// The row's value on which the selection does not agree, in the words of the kind of widget.
    static bool tells_mixed(const QWidget& widget, const RowMark& mark)
    {
        if (mark.tells_mixed())
            return true;
        if (auto* box = qobject_cast<const QCheckBox*>(&widget))
            return box->checkState() == Qt::PartiallyChecked;
        if (auto* button = qobject_cast<const QAbstractButton*>(&widget))
            return !button->isChecked();
        if (auto* text = qobject_cast<const QPlainTextEdit*>(&widget))
            return !text->placeholderText().isEmpty() && text->toPlainText().isEmpty();
        if (auto* combo = qobject_cast<const QComboBox*>(&widget))
            return combo->currentIndex() < 0;
        auto* line = qobject_cast<const QLineEdit*>(&widget);
        if (!line)
            line = widget.findChild<QLineEdit*>();
        return line && line->text().isEmpty() && !line->placeholderText().isEmpty();
    }
    void confirm(CBoundPage& page)
    {
        if (auto* ok = qobject_cast<QAbstractButton*>(page.control(id_ok)))
            ok->click();
    }
    void reset(QWidget& widget)
    {
        m_answers.commands.push_back(reset_command);
        QContextMenuEvent menu(QContextMenuEvent::Keyboard, {}, widget.mapToGlobal(QPoint()));
        QApplication::sendEvent(&widget, &menu);
    }
    /// A value that another button of the row's stands for.
    qint64 other_option(const FieldRow& row) const
    {
        return *row.option > m_objects.back()->fields().find(row.field)->rules().minimum ? *row.option - 1
                                                                                         : *row.option + 1;
    }
    void walk_row(CBoundPage& page, const FieldRow& row);

    std::vector<CDXUTDialog*> m_dialogs;
    std::vector<ModelObject*> m_objects;
};

void PageRows::walk_row(CBoundPage& page, const FieldRow& row)
{
    select_for(page, row);
    QWidget& widget = *page.control(row.control);
    const auto& mark = *page.findChild<RowMark*>(u"mark_"_s + widget.objectName(), Qt::FindDirectChildrenOnly);
    if (row.option && held_by_current(row) == Value(qint64(*row.option)))
        for (int object = 0; object < 2; ++object)
            put(object, row, other_option(row));
    tell();
    m_scene->journal().clear();
    ASSERT_TRUE(widget.isEnabled());
    m_frame.activateWindow(); // A colour picker may have been open.
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_frame));
    const Target& target = row.target ? *row.target : page.target();
    const bool is_for_all = row.scope == Scope::EverySelected && target.selected(*m_scene).size() > 1;
    const Value before = held_by_current(row);
    const Value other_before = held(0, row);
    const QString shown_before = shown(widget);

    ASSERT_TRUE(edit(page, widget, row)) << "a kind of widget that the test does not know";
    confirm(page);
    const Value after = held_by_current(row);
    EXPECT_FALSE(after == before) << "nothing reached the model";
    EXPECT_TRUE(!row.option || after == Value(qint64(*row.option)));
    EXPECT_TRUE(!qobject_cast<CColorSwatch*>(&widget) || quint32(number_of(after)) == new_color);
    EXPECT_TRUE(held(0, row) == (is_for_all ? after : other_before));
    tell();
    const QString shown_after = shown(widget);
    EXPECT_NE(shown_after, shown_before);

    ASSERT_EQ(m_scene->journal().step_count(), 1u);
    ASSERT_TRUE(m_scene->journal().undo());
    tell();
    EXPECT_TRUE(held_by_current(row) == before && held(0, row) == other_before);
    EXPECT_EQ(shown(widget), shown_before);
    ASSERT_TRUE(m_scene->journal().redo());
    tell();
    EXPECT_TRUE(held_by_current(row) == after);
    EXPECT_EQ(shown(widget), shown_after);

    if (is_for_all && !(other_before == after)) {
        put(0, row, other_before);
        tell();
        EXPECT_TRUE(tells_mixed(widget, mark));
    }
    const Value usual = part_of(m_objects.back()->fields().find(row.field)->default_value(), row.part);
    if (is_for_all)
        put(0, row, after);
    put(1, row, after);
    tell();
    EXPECT_EQ(mark.tells_changed(), row.reset == Default::Offered && !(after == usual));
    if (row.reset == Default::None || after == usual)
        return;
    reset(widget);
    confirm(page);
    EXPECT_TRUE(held_by_current(row) == usual);
    EXPECT_FALSE(mark.tells_changed());
}

} // namespace

TEST_F(PageRows, what_is_done_in_a_row_reaches_the_model_comes_back_by_undo_and_can_be_reset)
{
    std::size_t walked = 0;
    for (CBoundPage* page : pages())
        for (const FieldRow* row : page->field_rows()) {
            SCOPED_TRACE(page->page_name().toStdString() + " " + std::to_string(row->control) + " "
                         + row->field.text());
            walk_row(*page, *row);
            ++walked;
        }
    EXPECT_GT(walked, 120u);
    EXPECT_TRUE(m_answers.buttons.empty() && m_answers.dialogs.empty() && m_answers.commands.empty());
}

TEST_F(PageRows, the_wheel_over_a_combo_box_or_an_edit_without_the_focus_changes_nothing)
{
    int rolled = 0;
    for (CBoundPage* page : pages()) {
        for (const FieldRow* row : page->field_rows()) {
            select_for(*page, *row);
            QWidget& widget = *page->control(row->control);
            const Value before = held_by_current(*row);
            m_frame.setFocus();
            QWheelEvent event({5, 5}, {5, 5}, {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(&widget, &event);
            EXPECT_TRUE(held_by_current(*row) == before) << page->page_name().toStdString() << row->control;
            if (qobject_cast<QComboBox*>(&widget)) {
                EXPECT_FALSE(event.isAccepted()) << "left to the page, which scrolls";
                ++rolled;
            }
        }
    }
    EXPECT_GT(rolled, 3);
}

} // namespace tarn::test
