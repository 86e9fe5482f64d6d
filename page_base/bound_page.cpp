#include "bound_page.h"

#include "core/field.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"

#include <QAbstractButton>
#include <QLabel>

#include <utility>

using tarn::CommonValue;
using tarn::FieldBase;
using tarn::ModelObject;
using tarn::Value;

namespace {

/// Looks an attribute up in the tables of many objects, most of which are of one class.
class FieldOf {
public:
    explicit FieldOf(tarn::FieldKey key) : m_key(key) {}

    /// Null for an object without the attribute.
    const FieldBase* operator()(const ModelObject& object)
    {
        if (const tarn::FieldTable* table = &object.fields(); table != m_table) {
            m_table = table;
            m_field = table->find(m_key);
        }
        return m_field;
    }

private:
    tarn::FieldKey m_key;
    const tarn::FieldTable* m_table = nullptr;
    const FieldBase* m_field = nullptr;
};

} // namespace

CommonValue tarn::common_value(std::span<ModelObject* const> objects, FieldKey key)
{
    using Agreement = CommonValue::Agreement;
    CommonValue common;
    FieldOf field_of(key);
    for (const ModelObject* object : objects) {
        const FieldBase* field = field_of(*object);
        if (!field || field->rules().read_only)
            continue;
        Value value = object->property(*field);
        if (common.agreement == Agreement::None)
            common = {Agreement::Same, std::move(value), field};
        else if (!(common.value == value))
            return {Agreement::Mixed, {}, field};
    }
    return common;
}

/// While an edit of a row is written, the echo of the broadcast leaves the row's widget alone.
class CBoundPage::Writing {
public:
    Writing(CBoundPage& page, const Row& row) : m_page(page), m_outer(std::exchange(page.m_written, &row)) {}
    ~Writing() { m_page.m_written = m_outer; }
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

private:
    CBoundPage& m_page;
    const Row* m_outer;
};

CBoundPage::CBoundPage(const QString& page_name, Target target, QWidget* parent)
    : CGuiChildDlg(page_name, parent), m_target(target)
{
}

CBoundPage::CBoundPage(const QString& page_name, int control_type, QWidget* parent)
    : CGuiChildDlg(page_name, parent), m_target(Target::Controls), m_control_type(control_type)
{
}

CBoundPage::~CBoundPage() = default;

void CBoundPage::bind(std::span<const tarn::FieldRow> rows)
{
    for (const tarn::FieldRow& row : rows) {
        QWidget* widget = control(row.control);
        auto editor = widget ? tarn::make_value_editor(*widget, row) : nullptr;
        Q_ASSERT_X(editor, "bind", "the form has no fitting control for this attribute");
        if (!editor)
            continue;
        Row& bound = m_rows.emplace_back(Row{row, std::move(editor)});
        bound.editor->on_edited = [this, &bound](const Value& value) { on_edited(bound, value); };
        bound.editor->on_finished = [this] {
            end_typing();
            if (core())
                refresh(); // What was typed may have been held to the attribute's limits.
        };
    }
}

bool CBoundPage::has_selection() const
{
    return current() != nullptr;
}

ModelObject* CBoundPage::current() const
{
    if (!core())
        return nullptr;
    const tarn::SelectionRecord& selection = core()->selection();
    const bool of_controls = m_target == Target::Controls;
    if (!selection.editing || selection.controls_selected != of_controls)
        return nullptr;
    if (!of_controls)
        return selection.current_dialog;
    CDXUTControl* control = selection.current_control;
    return control && (m_control_type == any_type || control->GetType() == m_control_type) ? control : nullptr;
}

std::vector<ModelObject*> CBoundPage::selected() const
{
    if (!has_selection())
        return {};
    const tarn::SelectionRecord& selection = core()->selection();
    if (m_target == Target::Dialogs)
        return {selection.dialogs.begin(), selection.dialogs.end()};
    std::vector<ModelObject*> controls;
    tarn::walk(selection.controls, [&](CDXUTControl* control) {
        if (m_control_type == any_type || control->GetType() == m_control_type)
            controls.push_back(control);
    });
    return controls;
}

bool CBoundPage::reacts_to(int code) const
{
    switch (code) {
    case tarn::ui_full_refresh:
    case tarn::ui_scene_changed:
    case tarn::ui_selection_changed: return true;
    case tarn::ui_control_selected:
    case tarn::ui_control_properties: return m_target == Target::Controls;
    case tarn::ui_dialog_properties: return m_target == Target::Dialogs;
    default: return false;
    }
}

void CBoundPage::update_ui(int code)
{
    if (core() && reacts_to(code))
        refresh();
}

void CBoundPage::refresh()
{
    const std::vector<ModelObject*> all = selected();
    ModelObject* const current_one = current();
    const std::span<ModelObject* const> one(&current_one, current_one ? 1 : 0);
    for (const Row& bound : m_rows) {
        if (&bound == m_written)
            continue;
        const bool common = bound.row.shows == tarn::Shows::Common && bound.row.scope == tarn::Scope::EverySelected;
        bound.editor->show(tarn::common_value(common ? std::span<ModelObject* const>(all) : one, bound.row.field));
    }
    m_scripts.show();
    m_images.show();
}

void CBoundPage::on_edited(const Row& bound, const Value& value)
{
    const QWidget* widget = control(bound.row.control);
    if (!has_selection() || (bound.row.gate == tarn::Gate::WithFocus && !widget->hasFocus()))
        return;
    const QByteArray key = bound.editor->merges() ? page_name().toLatin1() + '/' + QByteArray::number(bound.row.control)
                                                  : QByteArray();
    run_action(
        [&] {
            const Writing writing(*this, bound);
            row_edited(bound.row.control, value);
            write_row(bound, value);
            follow(bound.row.follows);
        },
        caption_of(bound.row.control), key);
}

void CBoundPage::write_row(const Row& bound, const Value& value)
{
    write(bound.row.field, value, bound.row.scope);
    if (!bound.row.together)
        return;
    for (const Row& other : m_rows) {
        // What goes to the current object alone it has already.
        if (&other == &bound || other.row.together != bound.row.together || other.row.scope == tarn::Scope::Current)
            continue;
        // Not what the widgets show: a list that shows and hides objects tells nobody.
        if (const FieldBase* field = current()->fields().find(other.row.field))
            write(other.row.field, current()->property(*field), other.row.scope);
    }
}

void CBoundPage::write(tarn::FieldKey key, const Value& value, tarn::Scope scope)
{
    const std::vector<ModelObject*> targets = scope == tarn::Scope::Current
        ? std::vector<ModelObject*>(has_selection() ? 1 : 0, current())
        : selected();
    FieldOf field_of(key);
    tarn::Status failed;
    tarn::walk(targets, [&](ModelObject* object) {
        const FieldBase* field = field_of(*object);
        if (!field || !failed)
            return;
        failed = object->set_property(*field, value);
    });
    if (!failed)
        tarn::boxes::error(this, failed.message());
}

void CBoundPage::follow(tarn::Follows follows)
{
    if (follows == tarn::Follows::Broadcast) {
        tell_changed(); // This page hears it too.
        return;
    }
    refresh();
    if (follows == tarn::Follows::Redraw)
        update_all_views();
}

void CBoundPage::tell_changed()
{
    broadcast(m_target == Target::Controls ? tarn::ui_control_properties : tarn::ui_dialog_properties);
    update_all_views();
}

/// What the step of undo is called: the caption of the control, or that of the label before it.
QString CBoundPage::caption_of(int id) const
{
    QWidget* widget = control(id);
    QString caption;
    if (const auto* button = qobject_cast<QAbstractButton*>(widget))
        caption = button->text();
    for (const QLabel* label : findChildren<QLabel*>())
        if (label->buddy() == widget)
            caption = label->text();
    if (caption.isEmpty())
        caption = widget->toolTip();
    if (caption.isEmpty())
        return tarn::lang(u"修改属性", u"Change Property");
    return caption.remove(QLatin1Char('&')).remove(QLatin1Char(':')).remove(QChar(0xff1a));
}
