#include "object_rows.h"

#include "bound_page.h"
#include "core/field.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "gui_scene/gui_plug_scene.h"
#include "value_part.h"
#include "widgets/button_st.h"
#include "world/world_scene.h"

namespace tarn {

namespace {

QString object_caption(const CBaseWorld& world, ObjectRef reference)
{
    if (reference.id == 0)
        return lang(u"（无）", u"(None)");
    const WorldObject* object = world.objects().find(reference.id);
    return object ? QString(object->name()).replace(QLatin1Char('&'), QLatin1String("&&"))
                  : lang(u"（不存在的物体）", u"(A missing object)");
}

} // namespace

void SceneObjectRows::bind(std::span<const SceneObjectRow> rows)
{
    for (const SceneObjectRow& row : rows) {
        for (const int id : {row.button, row.clear_button})
            if (!m_page.button(id))
                return m_page.tell_missing(id, QString::fromLatin1(row.field.text()));
        m_rows.push_back(row);
        m_marks.push_back(new RowMark(*m_page.button(row.button), m_page));
        QObject::connect(m_page.button(row.button), &CButtonST::clicked, &m_page, [this, row] { choose(row); });
        QObject::connect(m_page.button(row.clear_button), &CButtonST::clicked, &m_page,
                         [this, field = row.field] { put(field, {}); });
    }
}

FieldKey SceneObjectRows::key_of(int button) const
{
    for (const auto& row : m_rows)
        if (button == row.button || button == row.clear_button)
            return row.field;
    return {};
}

void SceneObjectRows::show() const
{
    const ModelObject* object = m_page.current();
    const std::vector<ModelObject*> objects = m_page.selected();
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const SceneObjectRow& row = m_rows[i];
        using Agreement = CommonValue::Agreement;
        const CommonValue common = common_value(objects, row.field);
        const ObjectRef named = object ? value_as<ObjectRef>(m_page.value_of(*object, row.field)) : ObjectRef();
        m_page.button(row.button)->setText(object ? object_caption(*m_page.scene()->world(), named) : QString());
        m_page.button(row.button)->setEnabled(object);
        m_page.button(row.clear_button)->setEnabled(named.id != 0);
        m_marks[i]->show_state({.mixed = object && common.agreement == Agreement::Mixed});
    }
}

void SceneObjectRows::choose(const SceneObjectRow& row)
{
    const ModelObject* object = m_page.current();
    if (!object)
        return;
    const auto chosen = CDlgSelObjs::sel_objs(m_page.window(), *m_page.scene()->world(), row.kind,
                                              value_as<ObjectRef>(m_page.value_of(*object, row.field)));
    if (chosen)
        put(row.field, *chosen);
}

void SceneObjectRows::put(FieldKey field, ObjectRef object)
{
    if (!m_page.has_selection())
        return;
    m_page.change([&] { m_page.write(field, object, Scope::Current); }, lang(u"选择物体", u"Choose Object"));
    m_page.tell_changed();
}

} // namespace tarn
