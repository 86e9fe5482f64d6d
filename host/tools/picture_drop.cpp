#include "picture_drop.h"

#include "core/field_key.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/control_state.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_input.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/picture_file.h"
#include "hit_test.h"

namespace tarn {

namespace {

/// What of a control the author means who drops a picture onto it; null for a control that shows none.
const FieldKey* picture_field(const CDXUTControl& control)
{
    static const FieldKey fields[] = {key<&PictureState::image>, key<&ImageButtonState::image_normal>,
                                      key<&ProgressState::image>};
    for (const FieldKey& field : fields)
        if (control.fields().find(field))
            return &field;
    return nullptr;
}

Result<CDXUTControl*> new_picture(CGuiPlugScene& scene, const QString& file, QPointF place)
{
    CGuiCore& core = scene.gui_core();
    const auto image = load_picture(file);
    if (!image)
        return image.status();
    CDXUTDialog* below = GuiInput::dialog_at(core, place);
    CDXUTDialog& home = below ? *below : *core.GetRootDialog();
    QSizeF size = image.value().size();
    const QSizeF room = home.client_size();
    if (size.width() > room.width() || size.height() > room.height())
        size.scale(room, Qt::KeepAspectRatio);
    QRectF frame(QPointF(), size.toSize().expandedTo({1, 1}));
    frame.moveCenter(home.to_client(place));
    frame.moveTopLeft(frame.topLeft().toPoint());
    CDXUTControl* made = core.create_control(DXUT_CONTROL_PICTURE, &home, frame);
    if (!made)
        return Status::error(lang(u"无法创建图片控件。", u"The picture cannot be created."));
    return made;
}

} // namespace

Status drop_picture(CGuiPlugScene& scene, const QString& file, QPointF place)
{
    CGuiCore& core = scene.gui_core();
    const auto targets = targets_at(core, place);
    CDXUTControl* target = targets.empty() ? nullptr : targets.front().control;
    UserAction action(scene.journal(), lang(u"放入图片", u"Drop Picture"));
    if (!target || !picture_field(*target)) {
        const auto made = new_picture(scene, file, place);
        if (!made)
            return made.status();
        target = made.value();
    }
    const Status set = scene.set_picture({target}, *picture_field(*target), file);
    core.SelectControl(target, false);
    scene.world()->broadcast(ui_scene_changed);
    return set;
}

} // namespace tarn
