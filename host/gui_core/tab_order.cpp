#include "tab_order.h"

#include "dxut_control.h"
#include "dxut_dialog.h"

#include <algorithm>

namespace tarn {

namespace {

using Stops = std::vector<CDXUTControl*>;

/// What begins above the middle of the topmost control of a row belongs to the row.
void sort_as_read(Stops& stops)
{
    const auto by_top = [](const CDXUTControl* a, const CDXUTControl* b) {
        return a->bounds().top() < b->bounds().top();
    };
    const auto by_left = [](const CDXUTControl* a, const CDXUTControl* b) {
        return a->bounds().left() < b->bounds().left();
    };
    std::stable_sort(stops.begin(), stops.end(), by_top);
    for (auto row = stops.begin(); row != stops.end();) {
        const double middle = (*row)->bounds().center().y();
        const auto end = std::find_if(row + 1, stops.end(),
                                      [middle](const CDXUTControl* c) { return c->bounds().top() >= middle; });
        std::stable_sort(row, end, by_left);
        row = end;
    }
}

} // namespace

std::vector<CDXUTControl*> tab_stops(const CDXUTDialog& dialog)
{
    Stops stops;
    std::copy_if(dialog.controls().begin(), dialog.controls().end(), std::back_inserter(stops),
                 [](const CDXUTControl* control) { return control->can_be_reached(); });
    sort_as_read(stops);
    const auto behind = std::stable_partition(stops.begin(), stops.end(),
                                              [](const CDXUTControl* c) { return c->tab_order() > 0; });
    std::stable_sort(stops.begin(), behind,
                     [](const CDXUTControl* a, const CDXUTControl* b) { return a->tab_order() < b->tab_order(); });
    return stops;
}

} // namespace tarn
