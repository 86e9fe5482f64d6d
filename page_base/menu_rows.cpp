#include "menu_rows.h"

#include "bound_page.h"
#include "core/field.h"
#include "core/language.h"
#include "dlg_menu_pick.h"
#include "gui_core/dxut_menu.h"
#include "gui_scene/gui_plug_scene.h"
#include "value_part.h"
#include "widgets/button_st.h"

namespace tarn {

namespace {

quint32 menu_of(const ModelObject& object, FieldKey key)
{
    const FieldBase* field = object.fields().find(key);
    return field ? value_as<ObjectRef>(object.property(*field)).id : 0;
}

QString menu_caption(const CGuiCore& core, quint32 id)
{
    if (id == 0)
        return lang(u"（无菜单）", u"(No menu)");
    const CDXUTMenu* menu = core.find_menu(id);
    return menu ? QString(menu->name()).replace(QLatin1Char('&'), QLatin1String("&&"))
                : lang(u"（已删除的菜单）", u"(A deleted menu)");
}

} // namespace

void BoundMenuRows::bind(std::span<const BoundMenuRow> rows)
{
    for (const BoundMenuRow& row : rows) {
        for (const int id : {row.button, row.clear_button})
            if (!m_page.button(id))
                return m_page.tell_missing(id, QString::fromLatin1(row.field.text()));
        m_rows.push_back(row);
        m_marks.push_back(new RowMark(*m_page.button(row.button), m_page));
        QObject::connect(m_page.button(row.button), &CButtonST::clicked, &m_page,
                         [this, field = row.field] { choose(field); });
        QObject::connect(m_page.button(row.clear_button), &CButtonST::clicked, &m_page,
                         [this, field = row.field] { put(field, 0); });
    }
}

FieldKey BoundMenuRows::key_of(int button) const
{
    for (const auto& row : m_rows)
        if (button == row.button || button == row.clear_button)
            return row.field;
    return {};
}

void BoundMenuRows::show() const
{
    const ModelObject* object = m_page.current();
    const std::vector<ModelObject*> objects = m_page.selected();
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const BoundMenuRow& row = m_rows[i];
        using Agreement = CommonValue::Agreement;
        const CommonValue common = common_value(objects, row.field);
        const bool has_field = object && object->fields().find(row.field);
        const bool none = common.agreement == Agreement::Same && common.value == Value(ObjectRef());
        m_page.button(row.button)
            ->setText(has_field ? menu_caption(m_page.scene()->gui_core(), menu_of(*object, row.field)) : QString());
        m_page.button(row.button)->setEnabled(has_field);
        m_page.button(row.clear_button)->setEnabled(has_field && common.agreement != Agreement::None && !none);
        m_marks[i]->show_state({.mixed = has_field && common.agreement == Agreement::Mixed});
    }
}

void BoundMenuRows::choose(FieldKey field)
{
    const ModelObject* object = m_page.current();
    if (!object)
        return;
    CDlgMenuPick picker(m_page.scene()->gui_core(), menu_of(*object, field));
    if (const auto chosen = picker.do_modal(m_page.window()))
        put(field, *chosen);
}

void BoundMenuRows::put(FieldKey field, quint32 menu)
{
    if (!m_page.has_selection())
        return;
    m_page.change([&] { m_page.write(field, ObjectRef{menu}); }, lang(u"绑定菜单", u"Bind Menu"));
    m_page.tell_changed();
}

} // namespace tarn
