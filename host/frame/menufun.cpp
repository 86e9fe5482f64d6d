#include "menufun.h"

#include "child_dlg.h"

#include <QCursor>
#include <QWidget>

int menufun::pop_menu(QWidget* parent, const std::vector<tarn::boxes::MenuItem>& items)
{
    return tarn::boxes::menu(parent, {.items = items, .place = QCursor::pos()});
}

void enable_all_controls(QWidget* page, bool enable)
{
    const auto children = page->findChildren<QWidget*>();
    for (QWidget* child : children)
        if (CChildDlg::control_number(child) >= 0)
            child->setEnabled(enable);
}
