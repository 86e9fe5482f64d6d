#include "picture_size.h"
#include "core/authored.h"

#include "core/field.h"
#include "core/language.h"
#include "gui_core/dxut_control.h"
#include "gui_core/gui_core.h"
#include "gui_draw/texture_cache.h"
#include "gui_scene/gui_plug_scene.h"

namespace tarn {

namespace {

/// Empty when the control has no picture that can be shown.
QSize picture_size(std::span<const ImageRow> rows, const CGuiCore& core, const ModelObject& control)
{
    for (const ImageRow& row : rows)
        for (const QString& name : control.fields().find(row.field)->names(Authored::state(control)))
            if (const QImage picture = texture(core, name); !picture.isNull())
                return picture.size();
    return {};
}

} // namespace

ActionResult size_to_pictures_of(std::span<const ImageRow> rows, CGuiPlugScene& scene,
                                 std::span<ModelObject* const> selected, const QString& missing)
{
    ActionResult result;
    for (ModelObject* object : selected) {
        const QSize size = picture_size(rows, scene.gui_core(), *object);
        if (size.isEmpty()) {
            result.message = missing;
            break;
        }
        static_cast<CDXUTControl*>(object)->SetSize(float(size.width()), float(size.height()));
        result.changed = true;
    }
    return result;
}

} // namespace tarn
