#pragma once

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "support/editor_fixture.h"
#include "timeline/dlg_gui_manager_timer.h"
#include "timeline/dlg_top_timer.h"
#include "timeline/report_list_timer.h"
#include "timeline/static_timer.h"
#include "widgets/button_st.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QScrollBar>

namespace tarn::test {

/// The editor in the mode of the timebars, with a dialog that is selected.
class TimelinePages : public Editor {
protected:
    void SetUp() override
    {
        start();
        VLCMsgIniW::set_language(Language::English);
        m_dialog = core().create_dialog(QRect(100, 50, 200, 100), u"Title"_s);
        core().SelectDialog(m_dialog, false);
        m_world.broadcast(ui_selection_changed);
        list_page().on_set_active(true);
        m_codes.clear();
    }
    CAnimationScene& animation() { return m_scene->animation(); }
    CTimebar* bar() { return animation().current_bar(); }
    CDlgGuiManagerTimer& list_page() { return static_cast<CDlgGuiManagerTimer&>(*page(u"CDlgGuiManagerTimer"_s)); }
    CReportListTimer& list() { return static_cast<CReportListTimer&>(*list_page().control(6567)); }
    CDlgTopTimer& tools() { return static_cast<CDlgTopTimer&>(*page(u"CDlgTopTimer"_s)); }
    CStaticTimer& timer() { return *tools().timeline(); }
    template <class Widget>
    Widget& tool(int id)
    {
        return *qobject_cast<Widget*>(tools().control(id));
    }
    void click(int id) { tool<QAbstractButton>(id).click(); }
    void click_in_list(int id) { qobject_cast<QAbstractButton*>(list_page().control(id))->click(); }
    QStringList items(int id)
    {
        QStringList texts;
        for (int i = 0; i < tool<QComboBox>(id).count(); ++i)
            texts.append(tool<QComboBox>(id).itemText(i));
        return texts;
    }
    void choose(int id, int row)
    {
        tool<QComboBox>(id).setCurrentIndex(row);
        Q_EMIT tool<QComboBox>(id).activated(row);
    }
    QStringList row(int index)
    {
        QStringList cells;
        for (int column = 0; column < 4; ++column)
            cells.append(list().item_caption(index, column));
        return cells;
    }
    QStringList names()
    {
        QStringList all;
        for (int i = 0; i < list().row_count(); ++i)
            all.append(list().item_caption(i, 0));
        return all;
    }
    /// A timebar with keys of the dialog at these times.
    void record_at(std::initializer_list<float> times)
    {
        animation().create_bar(10);
        m_world.broadcast(ui_timebars_changed);
        for (const float time : times) {
            timer().set_current_time(time);
            click(6487);
        }
        m_codes.clear();
    }

    CDXUTDialog* m_dialog = nullptr;
};

} // namespace tarn::test
