#include "bound_page.h"

#include "animation/animation_scene.h"
#include "animation/timebar.h"
#include "core/field.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "field_of.h"
#include "frame/boxes.h"
#include "gui_scene/gui_plug_scene.h"
#include "value_part.h"
#include "value_sources.h"
#include "widgets/button_st.h"

#include <QAbstractButton>

#include <algorithm>
#include <utility>

using tarn::CommonValue;
using tarn::Edit;
using tarn::FieldBase;
using tarn::FieldKey;
using tarn::FieldOf;
using tarn::FieldRow;
using tarn::lang;
using tarn::Limits;
using tarn::ModelObject;
using tarn::RowView;
using tarn::Scope;
using tarn::Value;

namespace {

using Agreement = CommonValue::Agreement;

template <class Read>
CommonValue common_by(std::span<ModelObject* const> objects, FieldKey key, Read read)
{
    CommonValue common;
    FieldOf field_of(key);
    for (const ModelObject* object : objects) {
        const FieldBase* field = field_of(*object);
        if (!field || field->rules().read_only)
            continue;
        Value value = read(*object, *field);
        if (common.agreement == Agreement::None) {
            common = {Agreement::Same, std::move(value), field};
        } else if (!(common.value == value)) {
            common.agreement = Agreement::Mixed;
            break;
        }
    }
    return common;
}

} // namespace

CommonValue tarn::common_value(std::span<ModelObject* const> objects, FieldKey field)
{
    return common_by(objects, field,
                     [](const ModelObject& object, const FieldBase& held) { return object.property(held); });
}

CBoundPage::CBoundPage(const QString& page_name, const tarn::Target& target, QWidget* parent)
    : CGuiChildDlg(page_name, parent), m_target(target)
{
}

CBoundPage::~CBoundPage() = default;

std::vector<const FieldRow*> CBoundPage::field_rows() const
{
    std::vector<const FieldRow*> rows;
    for (const Row& bound : m_rows)
        rows.push_back(&bound.row);
    return rows;
}

FieldKey CBoundPage::key_of(int id) const
{
    for (const Row& bound : m_rows) {
        const FieldRow& row = bound.row;
        const tarn::ListControls& list = row.list;
        for (const int control :
             {row.control, row.opener, list.edit, list.add, list.remove, list.up, list.down, list.paste})
            if (control && control == id)
                return row.field;
    }
    for (const FieldKey key : {m_images.key_of(id), m_menus.key_of(id), m_objects.key_of(id)})
        if (key)
            return key;
    return {};
}

QString CBoundPage::attribute_of(int id) const
{
    const FieldKey key = key_of(id);
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [id](const Row& r) { return r.row.control == id; });
    const ModelObject* object = !key ? nullptr : row != m_rows.end() ? current_of(row->row) : current();
    const FieldBase* field = object ? object->fields().find(key) : nullptr;
    return field ? QString::fromLatin1(field->name()) : QString();
}

void CBoundPage::bind(std::span<const FieldRow> rows)
{
    for (const FieldRow& row : rows)
        bind_row(row);
}

void CBoundPage::bind_row(const FieldRow& row)
{
    auto editor = control(row.control) ? tarn::make_value_editor(*this, row) : nullptr;
    const bool opens = !row.opener || control_as<QAbstractButton>(row.opener);
    if (!editor || !opens)
        return tell_missing(editor ? row.opener : row.control, QString::fromLatin1(row.field.text()));
    auto* mark = new tarn::RowMark(*control(row.control), *this);
    Row& bound = m_rows.emplace_back(Row{row, std::move(editor), mark});
    connect_row(bound);
    connect_input(bound);
}

void CBoundPage::tell_missing(int control, const QString& what)
{
    tarn::boxes::error(this,
                       lang(u"%1 的界面模板中没有可用的控件 %2（%3）。",
                            u"The form of %1 has no control %2 of a kind that can be used (%3).")
                           .arg(page_name())
                           .arg(control)
                           .arg(what));
}

void CBoundPage::connect_row(Row& bound)
{
    bound.editor->on_edited = [this, &bound](const Edit& edit) { on_edited(bound, edit); };
    bound.editor->on_finished = [this] {
        end_typing();
        if (core())
            refresh(); // What was typed may have been held to the attribute's limits.
    };
    bound.editor->on_abandoned = [this, &bound] {
        if (bound.row.follows != tarn::Follows::Nothing)
            update_all_views();
    };
    bound.editor->on_chosen = [this, &bound](int index) {
        if (!bound.row.list.chosen || !has_selection())
            return;
        const auto choose = [&] {
            write(bound.row.list.chosen, qint64(index), Scope::Current);
            follow(bound.row.follows);
        };
        change(choose, lang(u"选择", u"Choose"));
    };
    if (!bound.row.opener)
        return;
    connect(control_as<QAbstractButton>(bound.row.opener), &QAbstractButton::clicked, this, [this, &bound] {
        if (has_selection())
            open_files(bound);
    });
}

void CBoundPage::connect_input(Row& bound)
{
    auto* input = new tarn::RowInput(*control(bound.row.control));
    input->keeps_undo = [&bound] { return bound.editor->keeps_undo(); };
    connect(bound.mark, &tarn::RowMark::clicked, input, &tarn::RowInput::open_menu);
    input->explain = [this, &bound] {
        const ModelObject* object = current_of(bound.row);
        if (const FieldBase* field = object ? object->fields().find(bound.row.field) : nullptr)
            tarn::boxes::message(this,
                                 {.text = tarn::value_sources(*scene(), *object, *field).join(QLatin1Char('\n')),
                                  .title = caption_of(bound.row.control)});
    };
    if (bound.row.reset == tarn::Default::None)
        return;
    input->can_reset = [this, &bound] {
        return differs_from_default(bound.row.field, bound.row.part, targets_of(bound.row));
    };
    input->reset = [this, &bound] { on_edited(bound, {.to_default = true}); };
}

void CBoundPage::buffer_edits(int ok_button, int cancel_button, const QString& name)
{
    for (const int id : {ok_button, cancel_button})
        if (!button(id))
            return tell_missing(id, name);
    m_buffer.emplace();
    m_ok_button = ok_button;
    m_cancel_button = cancel_button;
    connect(button(ok_button), &QAbstractButton::clicked, this, [this, name] { confirm_edits(name); });
    connect(button(cancel_button), &QAbstractButton::clicked, this, &CBoundPage::drop_edits);
}

ModelObject* CBoundPage::current() const
{
    return scene() ? m_target.current(*scene()) : nullptr;
}

std::vector<ModelObject*> CBoundPage::selected() const
{
    return scene() ? m_target.selected(*scene()) : std::vector<ModelObject*>();
}

ModelObject* CBoundPage::current_of(const FieldRow& row) const
{
    return scene() ? target_of(row).current(*scene()) : nullptr;
}

std::vector<ModelObject*> CBoundPage::targets_of(const FieldRow& row) const
{
    return targets_of(target_of(row), row.scope);
}

std::vector<ModelObject*> CBoundPage::targets_of(const tarn::Target& target, Scope scope) const
{
    if (!scene())
        return {};
    if (scope == Scope::EverySelected)
        return target.selected(*scene());
    ModelObject* one = target.current(*scene());
    return std::vector<ModelObject*>(one ? 1 : 0, one);
}

void CBoundPage::update_ui(int code)
{
    const auto codes = m_target.codes();
    if (!core() || std::find(codes.begin(), codes.end(), code) == codes.end())
        return;
    // That attributes changed the model has told already.
    const bool is_fresh = code == m_target.changed_code() && !m_target.code_tells_more()
        && m_refreshed_in == scene()->document().changes().turn();
    if (!is_fresh)
        refresh();
}

void CBoundPage::model_changed(const tarn::ModelChange&)
{
    m_stale = !isVisible();
    if (m_stale)
        return;
    m_refreshed_in = scene()->document().changes().turn();
    refresh();
}

void CBoundPage::showEvent(QShowEvent* event)
{
    CGuiChildDlg::showEvent(event);
    if (std::exchange(m_stale, false))
        refresh();
}

void CBoundPage::refresh()
{
    if (m_buffer)
        m_buffer->drop_removed();
    const std::vector<ModelObject*> all = selected();
    const std::vector<ModelObject*> one = targets_of(m_target, Scope::Current);
    for (const Row& bound : m_rows)
        if (bound.row.target)
            show_row(bound, targets_of(*bound.row.target, Scope::EverySelected),
                     targets_of(*bound.row.target, Scope::Current));
        else
            show_row(bound, all, one);
    m_scripts.show();
    m_images.show();
    m_menus.show();
    m_objects.show();
    m_actions.show();
    if (!m_buffer)
        return;
    const bool waits = m_buffer->waits_for(all);
    for (const int id : {m_ok_button, m_cancel_button})
        button(id)->setEnabled(waits);
    QFont font = button(m_ok_button)->font();
    font.setBold(waits); // It is easily forgotten.
    button(m_ok_button)->setFont(font);
}

Value CBoundPage::held_by(const ModelObject& object, const FieldBase& field) const
{
    return m_buffer ? m_buffer->value(object, field) : object.property(field);
}

Value CBoundPage::value_of(const ModelObject& object, FieldKey field) const
{
    const FieldBase* held = object.fields().find(field);
    return held ? held_by(object, *held) : Value();
}

/// What the row's widget has to show of `object`.
Value CBoundPage::shown_value(const FieldRow& row, const ModelObject& object, const FieldBase& field) const
{
    const Value part = part_of(held_by(object, field), row.part);
    return row.conversion.shown ? row.conversion.shown(object, part, row.part) : part;
}

CommonValue CBoundPage::common_of(Objects objects, const FieldRow& row) const
{
    return common_by(objects, row.field, [&](const ModelObject& object, const FieldBase& field) {
        return shown_value(row, object, field);
    });
}

void CBoundPage::show_row(const Row& bound, Objects all, Objects one) const
{
    const FieldRow& row = bound.row;
    const Objects objects = row.scope == Scope::Current ? one : all;
    CommonValue common = common_of(objects, row);
    bool tells_mixed = false;
    if (row.shows == tarn::Shows::Current) {
        tells_mixed = common.agreement == Agreement::Mixed;
        common = common_of(one, row);
    }
    const RowView view = view_of(row, std::move(common), one.empty() ? nullptr : one.front());
    if (&bound != m_written)
        bound.editor->show(view);
    const bool has_say = view.enabled
        && (!row.option || (view.agreement == Agreement::Same && tarn::number_of(view.value) == *row.option));
    tarn::RowMark::State mark;
    if (has_say) {
        mark.changed = row.reset == tarn::Default::Offered && differs_from_default(row.field, row.part, objects);
        mark.mixed = tells_mixed;
        mark_driven(row.field, objects, mark);
    }
    bound.mark->show_state(mark);
}

void CBoundPage::mark_driven(FieldKey field, Objects objects, tarn::RowMark::State& mark) const
{
    using Drive = tarn::RowMark::Drive;
    for (const ModelObject* object : objects) {
        const auto driving = scene()->animation().driving(*object, field);
        if (!driving)
            continue;
        mark.driver = driving->bar->name();
        mark.drive = driving->is_recorded ? Drive::Keys : Drive::Unrecorded;
        if (!driving->is_recorded)
            return; // The rarer thing goes before the others.
    }
}

RowView CBoundPage::view_of(const FieldRow& row, CommonValue common, const ModelObject* shown) const
{
    RowView view;
    static_cast<CommonValue&>(view) = std::move(common);
    const bool is_there = view.agreement != Agreement::None && !row.part.is_none();
    view.enabled = is_there && (!row.enabled_if || (shown && row.enabled_if(*shown)));
    view.format = row.conversion.format ? row.conversion.format() : row.number.format;
    if (!is_there || !shown)
        return view;
    view.limits = limits_of(row, view.field->rules(), *shown);
    if (row.choices)
        view.choices = row.choices(*scene(), *shown);
    if (row.list.chosen)
        view.chosen = int(tarn::number_of(value_of(*shown, row.list.chosen)));
    return view;
}

Limits CBoundPage::limits_of(const FieldRow& row, const tarn::FieldRules& rules, const ModelObject& shown) const
{
    Limits limits{row.number.minimum, row.number.maximum};
    const auto narrow = [&limits](double minimum, double maximum) {
        limits = {std::max(limits.minimum, minimum), std::min(limits.maximum, maximum)};
    };
    if (row.part.of == tarn::Part::Of::Channel)
        narrow(0, 255);
    else if (!row.conversion.stored) // The field's are those of what is stored.
        narrow(rules.minimum, rules.maximum);
    if (row.limits) {
        const Limits own = row.limits(shown);
        narrow(own.minimum, own.maximum);
    }
    return limits;
}

bool CBoundPage::differs_from_default(FieldKey key, tarn::Part part, Objects objects) const
{
    FieldOf field_of(key);
    const FieldBase* last = nullptr;
    Value usual;
    return std::any_of(objects.begin(), objects.end(), [&](const ModelObject* object) {
        const FieldBase* field = field_of(*object);
        if (!field || field->rules().read_only)
            return false;
        if (field != last)
            usual = part_of(field->default_value(), part);
        last = field;
        return !std::holds_alternative<std::monostate>(usual) && !(part_of(held_by(*object, *field), part) == usual);
    });
}
