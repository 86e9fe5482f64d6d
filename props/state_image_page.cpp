#include "state_image_page.h"

#include "core/field.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "gui_core/dxut_control.h"
#include "gui_core/gui_core.h"
#include "gui_draw/texture_cache.h"
#include "widgets/button_st.h"

void CStateImagePage::bind_state_images(std::span<const tarn::ImageRow> rows, tarn::SetImage set, int size_button)
{
    m_state_images = rows;
    m_size_button = size_button;
    bind_images(rows, set);
    on_click(size_button, [this] { size_to_pictures(); });
}

void CStateImagePage::refresh()
{
    CBoundPage::refresh();
    button(m_size_button)->setEnabled(has_selection());
}

/// Empty when the control has no picture that can be shown.
QSize CStateImagePage::picture_size(const tarn::ModelObject& control) const
{
    for (const tarn::ImageRow& row : m_state_images)
        for (const QString& name : control.fields().find(row.field)->pictures(control.authored_state()))
            if (const QImage picture = tarn::texture(*core(), name); !picture.isNull())
                return picture.size();
    return {};
}

void CStateImagePage::size_to_pictures()
{
    bool resized = false;
    bool missing = false;
    for (tarn::ModelObject* object : selected()) {
        const QSize size = picture_size(*object);
        missing = size.isEmpty();
        if (missing)
            break;
        static_cast<CDXUTControl*>(object)->SetSize(float(size.width()), float(size.height()));
        resized = true;
    }
    if (resized)
        broadcast(tarn::ui_control_properties);
    if (missing)
        tarn::boxes::message(this,
                             {.text = tarn::lang(u"请先设置贴图！", u"Please select a picture first!"), .title = {}});
    update_all_views();
}
