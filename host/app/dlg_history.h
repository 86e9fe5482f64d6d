#pragma once

#include "frame/child_dlg.h"

#include <QTimer>

class QListView;
class Studio;

namespace tarn {
class HistoryModel;
}

/// The list of the steps that can be undone and redone; a click on one goes there.
class CDlgHistory : public CChildDlg {
    Q_OBJECT

public:
    explicit CDlgHistory(Studio& studio);

protected:
    void OnInitDialog() override;
    void showEvent(QShowEvent* event) override;

private:
    void refresh();

    Studio& m_studio;
    QListView* m_list = nullptr;
    tarn::HistoryModel* m_model = nullptr;
    QTimer m_pending; ///< one refresh for any number of changes
};
