#pragma once

#include "frame/child_dlg.h"
#include "script/script_log.h"
#include "widgets/report_list.h"

#include <QTimer>

class CBaseWorld;
class Studio;

/// The entries of a log: time, object, event, function, and what came of it.
class CReportListLog : public CReportList {
    Q_OBJECT

public:
    explicit CReportListLog(QWidget* parent = nullptr);

    QString get_item_caption(void* item, int column) const override;
};

/// What the functions of the running scene did; a double-click or Enter opens the function.
class CDlgEventLog : public CChildDlg {
    Q_OBJECT

public:
    explicit CDlgEventLog(Studio& studio);
    ~CDlgEventLog() override;

Q_SIGNALS:
    /// A function of the running scene failed, or printed something.
    void spoken();

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;
    void showEvent(QShowEvent* event) override;

private:
    void refresh();
    void take_new_entries();
    void open_function(int row);

    Studio& m_studio;
    CReportListLog* m_list = nullptr;
    std::deque<tarn::ScriptLogEntry> m_shown; ///< what the rows are bound to
    std::size_t m_seen = 0;                   ///< how many entries the log ever had when it was last looked at
    std::size_t m_heard = 0;                  ///< the same, when it was last heard of
    QTimer m_pending;                         ///< one refresh for any number of entries
};
