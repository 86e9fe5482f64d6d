#include "image_rows.h"

#include "bound_page.h"
#include "core/field.h"
#include "core/language.h"
#include "frame/boxes.h"
#include "frame/filedlg.h"
#include "gui_scene/gui_plug_scene.h"
#include "widgets/button_st.h"

#include <algorithm>

namespace tarn {

namespace {

QString picture_of(const ModelObject& object, const char* name)
{
    const FieldBase* field = object.fields().find(name);
    const Value value = field ? object.property(*field) : Value();
    const auto* picture = std::get_if<QString>(&value);
    return picture ? *picture : QString();
}

} // namespace

void ImageRows::bind(std::span<const ImageRow> rows, SetImage set)
{
    m_set = set;
    for (const ImageRow& row : rows) {
        const int slot = int(m_rows.size());
        m_rows.push_back(row);
        QObject::connect(m_page.button(row.button), &CButtonST::clicked, &m_page, [this, slot] { choose(slot); });
        QObject::connect(m_page.button(row.clear_button), &CButtonST::clicked, &m_page,
                         [this, field = row.field] { clear(field); });
    }
}

void ImageRows::show() const
{
    const ModelObject* object = m_page.current();
    const std::vector<ModelObject*> objects = m_page.selected();
    for (const ImageRow& row : m_rows) {
        const QString name = object ? picture_of(*object, row.field).section(QLatin1Char('/'), -1) : QString();
        m_page.button(row.button)->setText(QString(name).replace(QLatin1Char('&'), QLatin1String("&&")));
        m_page.button(row.button)->setEnabled(object);
        m_page.button(row.clear_button)
            ->setEnabled(std::any_of(objects.begin(), objects.end(),
                                     [&](const ModelObject* each) { return !picture_of(*each, row.field).isEmpty(); }));
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
    return m_set ? (scene.*m_set)(m_page.selected(), slot, path)
                 : scene.set_picture(m_page.selected(), m_rows[std::size_t(slot)].field, path);
}

void ImageRows::clear(const char* field)
{
    if (!m_page.has_selection())
        return;
    m_page.run_action(
        [&] {
            m_page.scene()->clear_picture(m_page.selected(), field);
            m_page.refresh();
            m_page.update_all_views();
        },
        lang(u"清除图片", u"Clear Picture"));
}

} // namespace tarn
