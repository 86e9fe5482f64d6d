#pragma once

#include "core/model_changes.h"
#include "engine/scene_plug.h"
#include "frame/child_dlg.h"
#include "widgets/report_list.h"

#include <QTimer>

class Studio;

/// Problems: what object, and what is wrong with it.
class CReportListProblems : public CReportList {
    Q_OBJECT

public:
    explicit CReportListProblems(QWidget* parent = nullptr);

    QString get_item_caption(void* item, int column) const override;
};

/// What is broken in the scene; a double-click or Enter selects the object, or opens the function. What does not look as
/// it is meant is looked for when the author asks for it, on the screens that he names and over time.
class CDlgProblems : public CChildDlg, private tarn::ModelListener {
    Q_OBJECT

public:
    explicit CDlgProblems(Studio& studio);
    ~CDlgProblems() override;

Q_SIGNALS:
    /// How many there are now, some time after the scene changed; not while it runs.
    void counted(int count);
    /// The author wants to see a timebar at one of its times.
    void time_wanted(quint32 timebar, float time);

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;
    void showEvent(QShowEvent* event) override;

private:
    void model_changed(const tarn::ModelChange& change) override;
    void refresh();
    void go_to(int row);
    void check_layout();
    bool select(tarn::ModelObject* object);
    void open_function(QString name, int line);

    Studio& m_studio;
    CReportListProblems* m_list = nullptr;
    std::vector<tarn::SceneModel::Problem> m_problems; ///< what the rows are bound to
    QTimer m_pending;                                  ///< one refresh for any number of changes
};
