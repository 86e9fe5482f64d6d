#include "dlg_manager_align.h"

#include "align_selection.h"
#include "widgets/button_st.h"

using tarn::Dimension;
using tarn::Edge;

CDlgManagerAlign::CDlgManagerAlign(QWidget* parent) : CGuiChildDlg(QStringLiteral("CDlgManagerAlign"), parent) {}

void CDlgManagerAlign::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    const auto add = [this](int id, int icon, auto operation) {
        button(id)->SetIcon(icon);
        on_click(id, operation);
    };
    add(6470, 6150, [this] { align(Edge::Left); });
    add(6475, 6151, [this] { align(Edge::MiddleX); });
    add(6482, 6152, [this] { align(Edge::Right); });
    add(6484, 6153, [this] { align(Edge::Top); });
    add(6487, 6084, [this] { align(Edge::MiddleY); });
    add(6492, 6154, [this] { align(Edge::Bottom); });
    add(6495, 6155, [this] { match(Dimension::Width); });
    add(6498, 6505, [this] { match(Dimension::Height); });
    add(6503, 6088, [this] { match(Dimension::Both); });
    add(6514, 6089, [this] { distribute(Qt::Horizontal); });
    add(6517, 6090, [this] { distribute(Qt::Vertical); });
}

void CDlgManagerAlign::align(Edge edge)
{
    if (core() && tarn::align_selection(*core(), edge))
        update_all_views();
}

void CDlgManagerAlign::match(Dimension dimension)
{
    if (core() && tarn::match_selection(*core(), dimension))
        update_all_views();
}

void CDlgManagerAlign::distribute(Qt::Orientation direction)
{
    if (core() && tarn::distribute_selection(*core(), direction))
        update_all_views();
}
