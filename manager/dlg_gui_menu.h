#pragma once

#include "page_base/list_page.h"

class CReportListMenu;

/// The list of the menus in the scene: creating, choosing and deleting them.
class CDlgGuiMenu : public CListPage {
    Q_OBJECT

public:
    explicit CDlgGuiMenu(QWidget* parent = nullptr);

    void update_ui(int code) override;
    void model_changed(const tarn::ModelChange& change) override;

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;

private:
    void fill_list();
    void on_new_menu();
    void on_list_clicked();
    void on_delete();

    CReportListMenu* m_list = nullptr;
};
