#include "timeline_clipboard.h"

#include "animation/key_clipboard.h"
#include "animation/t_var.h"
#include "frame/boxes.h"
#include "timeline_edits.h"
#include "timeline_host.h"
#include "timeline_view.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>

namespace tarn {

namespace {

void put_on_clipboard(const QByteArray& text)
{
    auto* data = new QMimeData;
    data->setData(QLatin1String(keys_mime_type), text);
    QGuiApplication::clipboard()->setMimeData(data);
}

SnapGrid grid_of(const CTimebar& bar)
{
    return {.frame_rate = bar.shows_frames() ? std::max(bar.frame_rate(), 1) : 0};
}

} // namespace

bool clipboard_has_keys()
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data && data->hasFormat(QLatin1String(keys_mime_type));
}

void copy_selected(TimelineHost& host)
{
    const TimelineView& view = host.timeline();
    if (!view.selection.keys().empty())
        put_on_clipboard(copy_keys(view.selection.keys()));
}

void cut_selected(TimelineHost& host)
{
    TimelineView& view = host.timeline();
    if (view.selection.keys().empty())
        return;
    put_on_clipboard(cut_keys(*view.bar(), view.selection.keys()));
    view.selection.refresh(view.bar());
}

void paste_at_cursor(TimelineHost& host)
{
    TimelineView& view = host.timeline();
    if (!clipboard_has_keys() || !view.bar())
        return;
    const QByteArray text = QGuiApplication::clipboard()->mimeData()->data(QLatin1String(keys_mime_type));
    auto pasted = paste_keys(*view.bar(), text, view.current_time, grid_of(*view.bar()));
    if (!pasted.ok()) {
        boxes::error(host.owner(), pasted.status().message());
        return;
    }
    view.selection.clear();
    view.selection.set_keys(std::move(pasted.value().keys));
    if (!pasted.value().left_out.isEmpty())
        tell(host, pasted.value().left_out.join(u'\n'));
}

void duplicate_at_cursor(TimelineHost& host)
{
    TimelineView& view = host.timeline();
    const KeySelection& keys = view.selection.keys();
    if (keys.empty())
        return;
    float first = max_time;
    for (const auto& [variable, times] : keys)
        first = std::min(first, times.front());
    const float offset = view.current_time - first;
    if (offset != 0)
        view.selection.set_keys(duplicate_keys(*view.bar(), keys, offset, grid_of(*view.bar())));
}

} // namespace tarn
