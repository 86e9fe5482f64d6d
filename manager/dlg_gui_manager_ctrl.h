#pragma once

#include "page_base/list_page.h"

#include <vector>

class CDXUTControl;
class CDXUTDialog;
class CButtonST;
class CReportListControl;

/// The list of controls: where the creation of a control begins, and where controls are selected, ordered in the layers
/// of their dialog, moved to another dialog and removed.
class CDlgGuiManagerCtrl : public CListPage {
    Q_OBJECT

public:
    explicit CDlgGuiManagerCtrl(QWidget* parent = nullptr);

    void update_ui(int code) override;
    void model_changed(const tarn::ModelChange& change) override;

protected:
    void OnInitDialog() override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;

private:
    void set_up_type_buttons();
    void arrange_type_buttons();
    void set_up_row_buttons();
    void set_up_filters();
    void set_up_list();

    void follow_dialogs();
    void refresh();
    void refill();
    void select_rows_of_selection();
    void update_buttons();
    void show_armed_type();

    void on_type_clicked(int button_id, int type);
    void on_dialog_filter(int entry);
    void on_list_clicked(int row, int column);
    void on_lock_clicked(int row);
    void on_rows_dropped(int row, bool below);
    bool is_sought(const CDXUTControl& control) const;
    void on_menu(int row, const QPoint& place);
    void select_controls_of_rows(CDXUTControl* current);
    void on_remove();
    void change_layer(bool (CDXUTDialog::*operation)(CDXUTControl*, int), int argument);
    void on_switch_dialog();

    CReportListControl* m_list = nullptr;
    std::vector<CButtonST*> m_type_buttons;       ///< that create controls, as they stand
    bool m_is_compact = false;                    ///< they have no captions
    QString m_sought;                             ///< part of a name or a number; empty lists all
    const CDXUTDialog* m_filter_dialog = nullptr; ///< whose controls are listed; null lists those of all dialogs
    bool m_selecting = false;                     ///< this page is telling the others what it selected
    bool m_order_stale = false;                   ///< what the rows are sorted by may have changed
};
