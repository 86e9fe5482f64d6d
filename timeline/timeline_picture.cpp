#include "timeline_picture.h"

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "core/language.h"

#include <QPainter>
#include <QWidget>

namespace tarn {

namespace {

void add_states(const CAnimationScene& scene, const CTimebar& shown, std::vector<StatePtr>& states)
{
    states.push_back(scene.shared_state());
    for (const CTimebar* bar : scene.bars()) {
        states.push_back(bar->shared_state());
        for (const CTimerObject* object : bar->objects()) {
            states.push_back(object->shared_state()); // Other timebars may drive the same.
            if (bar == &shown)
                for (const CTVar* variable : object->variables())
                    states.push_back(variable->shared_state());
        }
    }
    for (const CScriptKey* key : shown.script_keys())
        states.push_back(key->shared_state());
    for (const CTimeMark* mark : shown.marks())
        states.push_back(mark->shared_state());
}

} // namespace

TimelinePicture::Content::Content(const TimelineView& view, const QWidget& widget)
    : ratio(widget.devicePixelRatioF()),
      palette(widget.palette().cacheKey()),
      font(widget.font()),
      language(int(VLCMsgIniW::language())),
      size(view.client_width, view.client_height),
      axis(view.axis),
      rows(view.rows),
      faults(view.faults),
      keys(view.selection.keys()),
      scripts(view.selection.scripts())
{
    rows.box = {}; // It lies over the rest.
    const CTimebar* bar = view.bar();
    if (!bar)
        return;
    current_object = bar->current_object();
    current_variable = current_object ? current_object->current_variable() : nullptr;
    add_states(*view.scene, *bar, states);
    for (const TimelineRow& row : rows_between(view, bands::rows_top, view.client_height))
        if (row.object && !row.variable)
            names.push_back(row.object->is_broken() ? QString() : row.object->name());
}

bool TimelinePicture::is_stale(const TimelineView& view, const QWidget& widget) const
{
    return !m_content || *m_content != Content(view, widget);
}

void TimelinePicture::draw(const TimelineView& view, const QWidget& widget)
{
    auto content = std::make_unique<Content>(view, widget);
    if (m_content && *m_content == *content)
        return;
    if (!m_content || m_content->ratio != content->ratio || m_content->palette != content->palette
        || m_content->font != content->font)
        m_look = std::make_unique<TimelineLook>(widget.palette(), widget.font(), content->ratio);
    m_content = std::move(content);
    const QSize size(int(std::ceil(view.client_width * m_look->ratio)),
                     int(std::ceil(view.client_height * m_look->ratio)));
    if (m_image.size() != size)
        m_image = QImage(size, QImage::Format_RGB32);
    QPainter painter(&m_image);
    DevicePainter device(painter, m_look->ratio, m_look->font);
    paint_bands(device, *m_look, view);
    paint_rows(device, *m_look, view);
    m_look->columns.reset();
}

void TimelinePicture::paint(QPainter& painter, const TimelineView& view, const QWidget& widget, const QRegion& region)
{
    draw(view, widget);
    painter.scale(1 / m_look->ratio, 1 / m_look->ratio);
    DevicePainter device(painter, m_look->ratio, m_look->font);
    for (const QRect& rect : region) {
        // A pixel more: what Qt clips to is rounded outwards.
        const QRect source = device.at(rect).adjusted(-1, -1, 1, 1) & m_image.rect();
        painter.drawImage(source, m_image, source);
    }
    paint_overlay(device, *m_look, view);
    m_overlay = overlay_boxes(device, view);
}

QRegion TimelinePicture::overlay_change(const TimelineView& view, const QWidget& widget)
{
    QImage pixel(1, 1, QImage::Format_RGB32);
    QPainter painter(&pixel);
    const DevicePainter device(painter, widget.devicePixelRatioF(), widget.font());
    QRegion change;
    for (const std::vector<QRect>& boxes : {m_overlay, overlay_boxes(device, view)})
        for (const QRect& box : boxes)
            change += box;
    return change;
}

} // namespace tarn
