#pragma once

#include "support/attributes.h"
#include "support/editor_fixture.h"

#include "manager/report_list_control.h"
#include "widgets/button_st.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QTest>

#include <algorithm>
#include <array>
#include <functional>

namespace tarn::test {

enum Id : int {
    id_list = 6316,
    id_dialog_filter = 6548,
    id_type_filter = 6551,
    id_remove = 6338,
    id_set_top = 6322,
    id_set_bottom = 6106,
    id_move_up = 6588,
    id_move_down = 6108,
    id_switch_dialog = 6370,
    id_button = 6328,
    id_check_box = 6330,
    id_search = 6990,
};

inline constexpr std::array type_buttons{6328, 6330, 6332, 6334, 6336, 6342, 6344, 6346,
                                         6348, 6354, 6361, 6367, 6117, 6118, 6608, 6610};
inline constexpr std::array row_buttons{id_remove,  id_set_top,   id_set_bottom,
                                        id_move_up, id_move_down, id_switch_dialog};

class ControlList : public Editor {
protected:
    void SetUp() override
    {
        start();
        for (const auto& name : {u"First"_s, u"Second"_s, u"Third"_s})
            m_dialogs.push_back(core().create_dialog(QRect(0, 0, 400, 300), name));
    }
    CChildDlg& manager() { return *page(u"CDlgGuiManagerCtrl"_s); }
    CReportListControl& list() { return *dynamic_cast<CReportListControl*>(manager().control(id_list)); }
    CButtonST& button(int id) { return *dynamic_cast<CButtonST*>(manager().control(id)); }
    QComboBox& combo(int id) { return *dynamic_cast<QComboBox*>(manager().control(id)); }
    void click(int id) { button(id).click(); }
    void choose(int id, int entry)
    {
        combo(id).setCurrentIndex(entry);
        Q_EMIT combo(id).activated(entry);
    }
    void add(int dialog, int count, int type = DXUT_CONTROL_BUTTON)
    {
        for (int i = 0; i < count; ++i)
            core().create_control(type, m_dialogs[size_t(dialog)], QRectF(0, 20 * i, 60, 18));
    }
    void tell(int code)
    {
        m_world.broadcast(code);
        m_codes.clear();
    }
    /// As the user clicks, with Ctrl for all but the first.
    void click_rows(std::initializer_list<int> rows, int column = CReportListControl::Id)
    {
        manager().resize(400, 700);
        Qt::KeyboardModifiers modifiers;
        for (const int row : rows) {
            const QRect cell = list().visualRect(list().model()->index(row, column));
            QTest::mouseClick(list().viewport(), Qt::LeftButton, modifiers, cell.center());
            modifiers = Qt::ControlModifier;
        }
    }
    /// Windows that are not shown hear of their sizes late.
    void widen()
    {
        list().resize(600, 400);
        QResizeEvent event(list().size(), list().size());
        QApplication::sendEvent(&list(), &event);
        list().setColumnWidth(CReportListControl::Layer, 150); // A list that is not shown has narrow ones.
    }
    QPoint middle_of(int row)
    {
        return list().visualRect(list().model()->index(row, CReportListControl::Name)).center();
    }
    /// Drops what is selected after the press above or below another row.
    void drag_row(int row, int onto, bool below)
    {
        manager().resize(400, 700);
        widen();
        const QPoint place = middle_of(onto) + QPoint(0, below ? 4 : -4);
        QTest::mousePress(list().viewport(), Qt::LeftButton, {}, middle_of(row));
        QMouseEvent move(QEvent::MouseMove, place, list().viewport()->mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                         {});
        QApplication::sendEvent(list().viewport(), &move);
        QTest::mouseRelease(list().viewport(), Qt::LeftButton, {}, place);
    }
    QStringList column(int column)
    {
        QStringList texts;
        for (int row = 0; row < list().row_count(); ++row)
            texts.append(list().item_caption(row, column));
        return texts;
    }
    std::vector<CDXUTControl*> listed()
    {
        std::vector<CDXUTControl*> controls;
        for (int row = 0; row < list().row_count(); ++row)
            controls.push_back(list().control(row));
        return controls;
    }

    std::vector<CDXUTDialog*> m_dialogs;
};

} // namespace tarn::test
