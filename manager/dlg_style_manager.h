#pragma once

#include "page_base/gui_child_dlg.h"

class CReportListStyle;

/// The list of the styles that the interface can take on, and what is done with them as a whole.
class CDlgStyleManager : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgStyleManager(QWidget* parent = nullptr);

    void update_ui(int code) override;
    void model_changed(const tarn::ModelChange& change) override;
    void on_set_active(bool active) override;

Q_SIGNALS:
    /// One of the design pages is to come to the front: its index in the property bar.
    void design_page_wanted(int index);

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;

private:
    void fill_list();
    void update_buttons();
    void show_speed();
    void on_double_click(int row);
    void on_apply();
    void on_save();
    void on_delete();
    void on_reset();
    void on_speed(double speed);
    void on_change_picture();
    void apply(int row);

    CReportListStyle* m_list = nullptr;
};
