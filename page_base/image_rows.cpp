#include "image_rows.h"

#include "bound_page.h"
#include "core/field.h"
#include "core/language.h"
#include "frame/boxes.h"
#include "frame/filedlg.h"
#include "gui_scene/gui_plug_scene.h"
#include "value_part.h"
#include "widgets/button_st.h"

namespace tarn {

namespace {

QString picture_of(const ModelObject& object, const ImageRow& row)
{
    const FieldBase* field = object.fields().find(row.field);
    return field ? value_as<QString>(part_of(object.property(*field), row.part)) : QString();
}

} // namespace

QString picture_caption(const QString& picture)
{
    return picture.section(QLatin1Char('/'), -1).replace(QLatin1Char('&'), QLatin1String("&&"));
}

void ImageRows::bind(std::span<const ImageRow> rows, SetImage set)
{
    m_set = set;
    for (const ImageRow& row : rows) {
        const int slot = int(m_rows.size());
        for (const int id : {row.button, row.clear_button})
            if (!m_page.button(id))
                return m_page.tell_missing(id, QString::fromLatin1(row.field.text()));
        m_rows.push_back(row);
        m_marks.push_back(new RowMark(*m_page.button(row.button), m_page));
        QObject::connect(m_page.button(row.button), &CButtonST::clicked, &m_page, [this, slot] { choose(slot); });
        QObject::connect(m_page.button(row.clear_button), &CButtonST::clicked, &m_page, [this, row] { clear(row); });
    }
}

FieldKey ImageRows::key_of(int button) const
{
    for (const auto& row : m_rows)
        if (button == row.button || button == row.clear_button)
            return row.field;
    return {};
}

void ImageRows::show() const
{
    const ModelObject* object = m_page.current();
    const std::vector<ModelObject*> objects = m_page.selected();
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const ImageRow& row = m_rows[i];
        m_page.button(row.button)->setText(object ? picture_caption(picture_of(*object, row)) : QString());
        m_page.button(row.button)->setEnabled(object);
        using Agreement = CommonValue::Agreement;
        const CommonValue common = common_value(objects, row.field);
        const bool none = common.agreement == Agreement::Same && part_of(common.value, row.part) == Value(QString());
        m_page.button(row.clear_button)->setEnabled(common.agreement != Agreement::None && !none);
        m_marks[i]->show_state({.mixed = object && common.agreement == Agreement::Mixed});
    }
}

void ImageRows::choose(int slot)
{
    if (!m_page.has_selection())
        return;
    const QString path = filedlg::pop_open_dlg_img(m_page.window());
    if (path.isEmpty())
        return;
    m_page.run_action(
        [&] {
            const Status set = put(slot, path);
            if (!set)
                return boxes::error(&m_page, set.message());
            m_page.refresh();
            m_page.update_all_views();
        },
        lang(u"设置图片", u"Set Picture"));
}

Status ImageRows::put(int slot, const QString& path) const
{
    CGuiPlugScene& scene = *m_page.scene();
    const ImageRow& row = m_rows[std::size_t(slot)];
    return m_set ? (scene.*m_set)(m_page.selected(), slot, path)
                 : scene.set_picture(m_page.selected(), row.field, path, row.part.name);
}

void ImageRows::clear(const ImageRow& row)
{
    if (!m_page.has_selection())
        return;
    m_page.run_action(
        [&] {
            m_page.scene()->clear_picture(m_page.selected(), row.field, row.part.name);
            m_page.refresh();
            m_page.update_all_views();
        },
        lang(u"清除图片", u"Clear Picture"));
}

} // namespace tarn
