#pragma once

#include "widgets/report_list.h"

#include <optional>

class CTimerObject;
class CTVar;

namespace tarn {
class CScriptKey;
}

/// A list whose rows stand in the model's order, one of them current.
class CReportListTimerRows : public CReportList {
    Q_OBJECT

public:
    explicit CReportListTimerRows(QWidget* parent = nullptr);

    /// Shows these rows, in their order, with what they say now, and `current` as the selected one; null for none.
    void show_rows(const std::vector<void*>& rows, void* current);
    void* selected_row() const { return get_binded_ptr(get_last_sel_index()); } ///< null for none

Q_SIGNALS:
    /// The keyboard moved the selection.
    void navigated();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// The objects of a timebar; those whose targets are gone stand out.
class CReportListTimerCmd : public CReportListTimerRows {
    Q_OBJECT

public:
    explicit CReportListTimerCmd(QWidget* parent = nullptr);

    QString get_item_caption(void* item, int column) const override;
    std::vector<CellIcon> cell_icons(void* item, int column) const override;
};

/// The variables of a timer object.
class CReportListTimerVar : public CReportListTimerRows {
    Q_OBJECT

public:
    explicit CReportListTimerVar(QWidget* parent = nullptr);

    QString get_item_caption(void* item, int column) const override;
};

/// The script keys of a timebar by their times.
class CReportListTimerScript : public CReportListTimerRows {
    Q_OBJECT

public:
    explicit CReportListTimerScript(QWidget* parent = nullptr);

    QString get_item_caption(void* item, int column) const override;
};
