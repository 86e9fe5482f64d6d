#pragma once

#include "widgets/report_list.h"

#include <vector>

namespace tarn {
class WorldObject;
} // namespace tarn

/// The objects of the 3D world, each with the icon of its type, and columns that hide and lock it.
class CReportListWorld : public CReportList {
    Q_OBJECT

public:
    enum Column { Name, Shown, Locked };

    explicit CReportListWorld(QWidget* parent = nullptr);

    tarn::WorldObject* object(int row) const; ///< null when there is no such row
    /// The objects of the selected rows from top to bottom.
    std::vector<tarn::WorldObject*> selected_objects() const;

    QString get_item_caption(void* item, int column) const override;
    int get_item_icon(void* item) const override;
    void draw_additional(QPainter& painter, const QRect& cell, int row, int column) const override;
    bool selects_on_click(int column) const override { return column == Name; }
};
