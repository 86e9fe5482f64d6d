#pragma once

#include "frame/child_dlg.h"
#include "lua_binding.h"

#include <QPointer>

namespace tarn::script {

struct PageHandle {
    static constexpr const char* type_name = "studio.page";
    static constexpr const char* needed = "a page";

    QPointer<CChildDlg> page;
    QString name;

    bool operator==(const PageHandle& other) const { return page == other.page; }
};

/// A template control of a page.
struct ControlHandle {
    static constexpr const char* type_name = "studio.control";
    static constexpr const char* needed = "a control";

    PageHandle page;
    QPointer<QWidget> widget;
    int id = 0;

    bool operator==(const ControlHandle& other) const { return widget == other.widget; }
    /// "control 6317 is disabled"
    Status error(const QString& what) const;
};

Data page_handle(CChildDlg& page);
/// The page of that class; of several the one that is shown. Null when there is none.
CChildDlg* find_page(const QString& class_name);
/// Whether a user can see the page or could by scrolling.
bool is_shown(const QWidget& widget);

Result<CChildDlg*> alive(const PageHandle& handle);
Result<QWidget*> alive(const ControlHandle& handle);
/// The control when a user could work with it now, in a window that is active then.
Result<QWidget*> usable(const ControlHandle& handle);

} // namespace tarn::script
