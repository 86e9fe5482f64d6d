#pragma once

#include "page_base/list_page.h"

class CDXUTDialog;
class CReportListDialog;

/// The list of dialogs: creating, ordering, showing and removing them, and exporting, importing and merging whole
/// interfaces as package files.
class CDlgGuiManager : public CListPage {
    Q_OBJECT

public:
    explicit CDlgGuiManager(QWidget* parent = nullptr);

    void update_ui(int code) override;
    void model_changed(const tarn::ModelChange& change) override;

protected:
    void OnInitDialog() override;
    void showEvent(QShowEvent* event) override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;

private:
    void set_up_buttons();
    void fill_list();
    void select_current();
    void update_buttons();
    void release(int button_id);
    void show_armed();

    void on_create_window();
    void on_list_clicked(int row, int column);
    void select_dialog(CDXUTDialog* dialog, bool add = false);
    void on_menu(int row, const QPoint& place);
    void move_layer(int down);
    void on_remove();
    void on_export();
    void on_import();
    void on_merge();

    void export_to(const QString& path);
    void import_from(const QString& path);
    QString ask_merge_name();
    void merge_from(const QString& path);

    CReportListDialog* m_list = nullptr;
};
