#include "render.h"

#include "core/language.h"
#include "engine/world_edit.h"
#include "view/view3d.h"

#include <QImage>

namespace tarn {

Status render_to_file(CBaseWorld& world, const QString& path, QSize size)
{
    wait_for_models(world);
    const QImage picture = CView3D::render(world, size, 1);
    if (picture.save(path, "PNG"))
        return {};
    return Status::error(lang(u"无法写入图片 %1", u"The picture %1 cannot be written.").arg(path));
}

} // namespace tarn
