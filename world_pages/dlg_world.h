#pragma once

#include "page_base/list_page.h"

#include <QVector3D>

#include <vector>

class CMyRollup;
class CReportListWorld;

namespace tarn {
class WorldObject;
} // namespace tarn

/// The objects of the 3D world: a list in which they are found, selected, added, renamed, hidden, locked and removed, and
/// the attributes of those that are selected.
class CDlgWorld : public CListPage {
    Q_OBJECT

public:
    explicit CDlgWorld(QWidget* parent = nullptr);

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;
    void model_changed(const tarn::ModelChange& change) override;

private:
    void set_up_buttons();
    void set_up_list();

    void refresh();
    void refill();
    void select_rows_of_selection();
    void select_objects_of_rows();
    void update_buttons();

    void on_list_clicked(int row, int column);
    void on_menu(const QPoint& place);
    void on_add();
    void run(int command);
    void add(int type);
    void add_from_file();
    QVector3D new_place() const;
    std::vector<tarn::WorldObject*> rows_or(tarn::WorldObject& clicked) const;

    CReportListWorld* m_list = nullptr;
    CMyRollup* m_rollup = nullptr;
    bool m_selecting = false; ///< this page is telling the others what it selected
};
