// Any text in any control that shows one: it is laid out and drawn.

#include "fuzz.h"

#include "core/model_object.h"
#include "gui_core/control_class.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "gui_draw/gui_painter.h"

#include <QImage>
#include <QPainter>

void fuzz(FuzzInput input)
{
    static tarn::GuiPainter gui_painter;
    tarn::Document document;
    CGuiCore core(document);
    const auto classes = tarn::control_classes();
    const auto& chosen = classes[input.byte() % classes.size()];
    const QRectF place(0, 0, 1 + input.byte() * 2, 1 + input.byte());
    CDXUTControl* control = core.create_control(chosen.type, core.GetRootDialog(), place);
    if (!control)
        return;
    const std::uint8_t looks = input.byte();
    const int size = input.byte();
    const QString text = QString::fromUtf8(input.rest());
    const auto set = [&](const char* name, const tarn::Value& value) {
        if (const tarn::FieldBase* field = control->fields().find(name))
            (void)control->set_property(*field, value);
    };
    set("text", text);
    set("items", text.split(u'\n'));
    set("word_wrap", bool(looks & 1));
    set("rotation", looks & 2 ? 30.0 : 0.0);
    set("font_size", qint64(size));
    QImage image(256, 128, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    gui_painter.paint(painter, core, image.rect(), looks & 4 ? 2 : 1);
}
