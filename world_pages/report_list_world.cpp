#include "report_list_world.h"

#include "core/language.h"
#include "widgets/iconfun.h"
#include "world/world_object.h"
#include "world_kinds.h"

#include <QPainter>

using tarn::lang;
using tarn::WorldObject;

namespace {

constexpr int eye_open = 1;
constexpr int eye_closed = 2;
constexpr int lock = 6200;
constexpr int icon_side = 16;
constexpr double usual = 0.6; ///< opacity of icons for what is as usual

QList<int> kind_icons()
{
    QList<int> icons;
    for (const tarn::WorldKind& kind : tarn::world_kinds())
        icons.append(kind.icon);
    return icons;
}

} // namespace

CReportListWorld::CReportListWorld(QWidget* parent) : CReportList(parent)
{
    insert_column(Name, lang(u"名称", u"Name"), 6);
    insert_column(Shown, lang(u"显示", u"Show"), 2);
    insert_column(Locked, lang(u"锁定", u"Lock"), 2);
    set_icon_list(kind_icons());
    set_multi_selection(true);
}

WorldObject* CReportListWorld::object(int row) const
{
    return static_cast<WorldObject*>(get_binded_ptr(row));
}

std::vector<WorldObject*> CReportListWorld::selected_objects() const
{
    std::vector<WorldObject*> objects;
    for (void* item : selected_items())
        objects.push_back(static_cast<WorldObject*>(item));
    return objects;
}

QString CReportListWorld::get_item_caption(void* item, int column) const
{
    return column == Name ? static_cast<const WorldObject*>(item)->name() : QString();
}

int CReportListWorld::get_item_icon(void* item) const
{
    return int(static_cast<const WorldObject*>(item)->type());
}

void CReportListWorld::draw_additional(QPainter& painter, const QRect& cell, int row, int column) const
{
    const WorldObject* shown = object(row);
    if (!shown || column == Name)
        return;
    const bool is_usual = column == Shown ? shown->is_visible() : !shown->is_locked();
    const int icon = column == Locked ? lock : is_usual ? eye_open : eye_closed;
    if (is_usual && column == Locked && row != hovered_row())
        return; // A lock would be taken for a locked object's.
    if (is_usual)
        painter.setOpacity(usual);
    QRect place(0, 0, icon_side, icon_side);
    place.moveCenter(cell.center());
    iconfun::icon(icon).paint(&painter, place);
}
