// What a page writes: edits of its rows, and what pages that are more than rows write themselves.

#include "bound_page.h"

#include "core/language.h"
#include "field_of.h"
#include "frame/boxes.h"
#include "frame/filedlg.h"
#include "gui_scene/font_library.h"
#include "gui_scene/gui_plug_scene.h"
#include "value_part.h"
#include "widgets/button_st.h"

#include <QAbstractButton>
#include <QLabel>

#include <algorithm>
#include <utility>

using tarn::Edit;
using tarn::FieldBase;
using tarn::FieldKey;
using tarn::FieldOf;
using tarn::FieldRow;
using tarn::lang;
using tarn::Limits;
using tarn::ModelObject;
using tarn::Scope;
using tarn::Value;

/// While what is typed is written, the echo of the broadcast leaves the row's widget alone.
class CBoundPage::Writing {
public:
    Writing(CBoundPage& page, const Row* row) : m_page(page), m_outer(std::exchange(page.m_written, row)) {}
    ~Writing() { m_page.m_written = m_outer; }
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

private:
    CBoundPage& m_page;
    const Row* m_outer;
};

void CBoundPage::on_edited(const Row& bound, const Edit& edit)
{
    const FieldRow& row = bound.row;
    const bool typed = !edit.change && !edit.to_default;
    const ModelObject* shown = current_of(row);
    const FieldBase* field = shown ? shown->fields().find(row.field) : nullptr;
    if (!field || (typed && row.gate == tarn::Gate::WithFocus && !control(row.control)->hasFocus()))
        return;
    if (const QString reason = veto_of(row, edit); !reason.isEmpty()) {
        tarn::boxes::message(this, {.text = reason, .title = {}});
        return refresh();
    }
    const Value value = edited_value(row, *shown, *field, edit);
    if (!confirm_edit(row.control, value))
        return refresh();
    const bool goes_on = typed && bound.editor->merges();
    const QByteArray key = goes_on ? page_name().toLatin1() + '/' + QByteArray::number(row.control) : QByteArray();
    const auto write_all = [&] {
        const Writing writing(*this, goes_on ? &bound : nullptr);
        row_edited(row.control, value);
        write_row(row, edit);
        if (edit.chosen && row.list.chosen)
            write(row.list.chosen, qint64(*edit.chosen), Scope::Current);
        if (m_failed)
            follow(row.follows);
    };
    change(write_all, caption_of(row.control), key);
}

void CBoundPage::open_files(const Row& bound)
{
    const QString path = filedlg::pop_file_dlg(bound.row.files(), filedlg::mode_open, window());
    if (!path.isEmpty())
        on_edited(bound, {.value = path});
}

bool CBoundPage::confirm_edit(int, const Value&)
{
    return true;
}

void CBoundPage::row_edited(int, const Value&) {}

QString CBoundPage::veto_of(const FieldRow& row, const Edit& edit) const
{
    if (!row.veto)
        return {};
    FieldOf field_of(row.field);
    for (const ModelObject* object : targets_of(row))
        if (const FieldBase* field = field_of(*object))
            if (const QString reason = row.veto(*object, edited_value(row, *object, *field, edit)); !reason.isEmpty())
                return reason;
    return {};
}

/// What `object` gets: the whole value, also where the row shows a part of it.
Value CBoundPage::edited_value(const FieldRow& row, const ModelObject& object, const FieldBase& field,
                               const Edit& edit) const
{
    if (edit.to_default)
        return with_part(held_by(object, field), row.part, part_of(field.default_value(), row.part));
    Value shown = edit.value;
    if (edit.change) {
        const Limits limits = limits_of(row, field.rules(), object);
        const double number = edit.change->of(tarn::number_of(shown_value(row, object, field)));
        shown = std::clamp(number, limits.minimum, std::max(limits.minimum, limits.maximum));
    }
    if (row.conversion.stored)
        shown = row.conversion.stored(object, shown, row.part);
    return row.part.of == tarn::Part::Of::Whole ? shown : with_part(held_by(object, field), row.part, shown);
}

void CBoundPage::write_row(const FieldRow& row, const Edit& edit)
{
    write_each(targets_of(row), row.field, [&](const ModelObject& object, const FieldBase& field) {
        return edited_value(row, object, field, edit);
    });
    if (!row.together)
        return;
    for (const Row& other : m_rows) {
        // What goes to the current object alone it has already.
        if (other.row.field == row.field || other.row.together != row.together || other.row.scope == Scope::Current)
            continue;
        // Not what the widgets show: a list that shows and hides objects tells nobody.
        write(other.row.field, value_of(*current(), other.row.field), other.row.scope);
    }
}

void CBoundPage::set_part(int id, tarn::Part part)
{
    for (Row& bound : m_rows)
        if (bound.row.control == id)
            bound.row.part = part;
}

bool CBoundPage::change(const std::function<void()>& change, const QString& name, const QByteArray& merge_key)
{
    if (!m_buffer)
        return run_whole(change, name, merge_key);
    const tarn::EditBuffer before = *m_buffer;
    change();
    const tarn::Status failed = std::exchange(m_failed, {});
    if (failed)
        return true;
    *m_buffer = before;
    tarn::boxes::error(this, failed.message());
    refresh();
    return false;
}

bool CBoundPage::run_whole(const std::function<void()>& change, const QString& name, const QByteArray& merge_key)
{
    tarn::Status failed;
    const auto run = [&] {
        {
            const tarn::FontRelease fonts(*core(), scene()->fonts());
            change();
        }
        failed = std::exchange(m_failed, {});
        if (!failed)
            journal()->cancel();
    };
    run_action(run, name, merge_key);
    if (failed)
        return true;
    tarn::boxes::error(this, failed.message());
    refresh();
    return false;
}

void CBoundPage::write(FieldKey field, const Value& value, Scope scope, tarn::Part part)
{
    write_each(field, scope, [&](const ModelObject& object, const FieldBase& held) {
        return part.of == tarn::Part::Of::Whole ? value : with_part(held_by(object, held), part, value);
    });
}

void CBoundPage::write_default(FieldKey field, tarn::Part part)
{
    write_each(field, Scope::EverySelected, [&](const ModelObject& object, const FieldBase& held) {
        return with_part(held_by(object, held), part, part_of(held.default_value(), part));
    });
}

void CBoundPage::write_each(FieldKey key, Scope scope, const ValueOf& value_of)
{
    write_each(targets_of(m_target, scope), key, value_of);
}

void CBoundPage::write_each(Objects objects, FieldKey key, const ValueOf& value_of)
{
    FieldOf field_of(key);
    for (ModelObject* object : objects) {
        const FieldBase* field = field_of(*object);
        if (!field || !m_failed)
            continue;
        const Value value = value_of(*object, *field);
        if (m_buffer && value == held_by(*object, *field))
            continue; // Nothing waits then.
        m_failed = m_buffer ? m_buffer->put(*object, *field, value) : object->set_property(*field, value);
    }
}

void CBoundPage::follow(tarn::Follows follows)
{
    if (follows == tarn::Follows::Broadcast && !m_buffer) {
        tell_changed(); // This page hears it too.
        return;
    }
    refresh();
    if (follows == tarn::Follows::Redraw && !m_buffer)
        update_all_views();
}

void CBoundPage::tell_changed()
{
    broadcast(m_target.changed_code());
    update_all_views();
}

void CBoundPage::confirm_edits(const QString& name)
{
    const std::vector<ModelObject*> all = selected();
    const auto write_all = [&] {
        m_failed = write_buffered([&] { return m_buffer->write(all); });
        if (!m_failed)
            return;
        m_buffer->drop(all);
        tell_changed();
    };
    const tarn::EditBuffer before = *m_buffer;
    if (run_whole(write_all, name))
        return;
    *m_buffer = before;
    refresh();
}

void CBoundPage::drop_edits()
{
    m_buffer->drop(selected());
    refresh();
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
        caption = widget->accessibleName(); // Of fields that share a label.
    if (caption.isEmpty())
        caption = widget->toolTip();
    if (caption.isEmpty())
        return lang(u"修改属性", u"Change Property");
    return caption.remove(QLatin1Char('&')).remove(QLatin1Char(':')).remove(QChar(0xff1a));
}
