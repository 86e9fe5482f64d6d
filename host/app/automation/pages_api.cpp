#include "api.h"
#include "frame/rollup.h"
#include "main_window.h"
#include "page_handles.h"
#include "user_input.h"

#include <QApplication>
#include <QDockWidget>
#include <QToolButton>

#include <algorithm>

namespace tarn::script {

Data page_handle(CChildDlg& page)
{
    return to_lua(PageHandle{&page, page.page_name()});
}

CChildDlg* find_page(const QString& class_name)
{
    CChildDlg* found = nullptr;
    const auto widgets = QApplication::allWidgets();
    for (QWidget* widget : widgets) {
        auto* page = qobject_cast<CChildDlg*>(widget);
        if (!page || page->page_name() != class_name)
            continue;
        if (is_shown(*page))
            return page;
        found = page;
    }
    return found;
}

bool is_shown(const QWidget& widget)
{
    if (!widget.isVisible())
        return false;
    // A bar behind others in a stack of bars counts as visible, but lies beside the window.
    for (const QWidget* at = &widget; at && !at->isWindow(); at = at->parentWidget())
        if (qobject_cast<const QDockWidget*>(at) && at->visibleRegion().isEmpty())
            return false;
    return true;
}

Status ControlHandle::error(const QString& what) const
{
    return Status::error(QStringLiteral("control %1 %2").arg(id).arg(what));
}

Result<CChildDlg*> alive(const PageHandle& handle)
{
    if (!handle.page)
        return Status::error(QStringLiteral("page %1 is gone").arg(handle.name));
    return handle.page.data();
}

Result<QWidget*> alive(const ControlHandle& handle)
{
    if (const auto page = alive(handle.page); !page)
        return page.status();
    if (!handle.widget)
        return handle.error(QStringLiteral("is gone"));
    return handle.widget.data();
}

Result<QWidget*> usable(const ControlHandle& handle)
{
    auto widget = alive(handle);
    if (!widget)
        return widget;
    const auto on_page = [&](const char* what) {
        return Status::error(QStringLiteral("page %1 %2").arg(handle.page.name, QLatin1String(what)));
    };
    if (!is_shown(*handle.page.page))
        return on_page("is not shown");
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal && modal != widget.value()->window())
        return on_page("is blocked by an open dialog");
    if (!is_shown(*widget.value()))
        return handle.error(QStringLiteral("is not shown"));
    if (!widget.value()->isEnabled())
        return handle.error(QStringLiteral("is disabled"));
    input::bring_up(*widget.value());
    return widget;
}

namespace {

Result<Data> page(Automation&, const QString& class_name)
{
    if (CChildDlg* found = find_page(class_name))
        return page_handle(*found);
    return Status::error(QStringLiteral("there is no page %1").arg(class_name));
}

Data name_of(const CChildDlg* page)
{
    return page ? Data(page->page_name()) : Data();
}

Data property_page(Automation& app)
{
    return name_of(app.window().property_page());
}

Data side_page(Automation& app)
{
    return name_of(app.window().side_page());
}

Result<Data> is_page_visible(Automation&, PageHandle* self)
{
    const auto page = alive(*self);
    return page ? Result<Data>(is_shown(*page.value())) : page.status();
}

Result<Data> is_page_enabled(Automation&, PageHandle* self)
{
    const auto page = alive(*self);
    return page ? Result<Data>(page.value()->isEnabled()) : page.status();
}

Result<Data> control(Automation&, PageHandle* self, int id)
{
    const auto page = alive(*self);
    if (!page)
        return page.status();
    if (QWidget* widget = page.value()->control(id))
        return to_lua(ControlHandle{*self, widget, id});
    return Status::error(QStringLiteral("no control %1 on %2").arg(id).arg(self->name));
}

Result<Data> ids(Automation&, PageHandle* self)
{
    const auto page = alive(*self);
    if (!page)
        return page.status();
    QList<int> numbers = page.value()->controls().keys();
    std::sort(numbers.begin(), numbers.end());
    return Data(list_of(numbers, [](int number) { return Data(number); }));
}

Status fold(PageHandle& self, bool out)
{
    const auto page = alive(self);
    if (!page)
        return page.status();
    const CRollupCtrl* rollup = nullptr;
    for (QWidget* at = page.value()->parentWidget(); at && !rollup; at = at->parentWidget())
        rollup = qobject_cast<CRollupCtrl*>(at);
    QToolButton* heading = rollup ? rollup->heading_of(page.value()) : nullptr;
    if (!heading)
        return Status::error(QStringLiteral("page %1 cannot be folded").arg(self.name));
    if (!is_shown(*heading))
        return Status::error(QStringLiteral("the heading of page %1 is not shown").arg(self.name));
    if (heading->isChecked() != out)
        input::click(*heading, heading->rect().center());
    return {};
}

Status fold_in(Automation&, PageHandle* self)
{
    return fold(*self, false);
}

Status fold_out(Automation&, PageHandle* self)
{
    return fold(*self, true);
}

constexpr Binding functions[] = {
    {"page", "class", binding<page>},
    {"property_page", "", binding<property_page>},
    {"side_page", "", binding<side_page>},
};

constexpr Binding methods[] = {
    {"visible", "self", binding<is_page_visible>},
    {"enabled", "self", binding<is_page_enabled>},
    {"control", "self id", binding<control>},
    {"ids", "self", binding<ids>},
    {"fold", "self", binding<fold_in>},
    {"unfold", "self", binding<fold_out>},
};

} // namespace

std::span<const Binding> page_functions()
{
    return functions;
}

void add_page_type(lua_State* lua, Automation& app)
{
    add_type<PageHandle>(lua, app, methods);
}

} // namespace tarn::script
