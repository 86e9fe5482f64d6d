#include "api.h"
#include "control_kinds.h"
#include "page_handles.h"
#include "report_list_api.h"
#include "user_input.h"
#include "widgets/button_st.h"
#include "widgets/super_edit.h"

#include <QApplication>
#include <QCheckBox>
#include <QColor>
#include <QContextMenuEvent>
#include <QGroupBox>
#include <QVariant>

#include <cmath>

namespace tarn::script {

namespace {

Status lacks(const ControlHandle& control, const char* what)
{
    const QString kind = QLatin1String(kind_of(*control.widget).name);
    return control.error(QStringLiteral("is %1 and has no %2").arg(kind, QLatin1String(what)));
}

/// The control as a Widget; fails with what it `lacks` otherwise.
template <class Widget>
Result<Widget*> as(const Result<QWidget*>& widget, const ControlHandle& control, const char* what)
{
    if (!widget)
        return widget.status();
    if (auto* right = qobject_cast<Widget*>(widget.value()))
        return right;
    return lacks(control, what);
}

/// What `read` answers of the control, whether it is shown or not.
template <class Read>
Result<Data> read_from(const ControlHandle& control, Read read)
{
    const auto widget = alive(control);
    return widget ? Result<Data>(read(*widget.value())) : widget.status();
}

// Mouse and keyboard --------------------------------------------------------------------------------------------------

Status click(Automation& app, ControlHandle* self)
{
    const auto widget = usable(*self);
    if (!widget)
        return widget.status();
    if (!kind_of(*widget.value()).clicked_as_a_whole)
        return lacks(*self, "single place to click");
    click_widget(*widget.value());
    app.settle();
    return {};
}

/// The widget that takes the keys of a control, ready for them.
Result<QWidget*> editor_of(const ControlHandle& control)
{
    const auto widget = usable(control);
    if (!widget)
        return widget;
    const ControlKind& kind = kind_of(*widget.value());
    QWidget* editor = kind.editor ? kind.editor(*widget.value()) : nullptr;
    if (!editor)
        return lacks(control, "text to edit");
    if (editor->property("readOnly").toBool())
        return control.error(QStringLiteral("is read-only"));
    return editor;
}

Status set_text(Automation& app, ControlHandle* self, const QString& text)
{
    const auto editor = editor_of(*self);
    if (!editor)
        return editor.status();
    input::type_over(*editor.value(), text);
    app.settle();
    return {};
}

Status type(Automation& app, ControlHandle* self, const QString& text)
{
    const auto editor = editor_of(*self);
    if (!editor)
        return editor.status();
    input::type(*editor.value(), text);
    app.settle();
    return {};
}

Status key(Automation& app, ControlHandle* self, const QString& name, const std::optional<QString>& mods)
{
    const auto widget = usable(*self);
    const auto modifiers = read_modifiers(mods);
    const auto code = read_key(name);
    if (!widget || !modifiers || !code)
        return !widget ? widget.status() : !modifiers ? modifiers.status() : code.status();
    input::focus(*widget.value());
    input::key(*widget.value(), code.value(), modifiers.value());
    app.settle();
    return {};
}

Status right_click(Automation& app, ControlHandle* self)
{
    const auto widget = usable(*self);
    if (!widget)
        return widget.status();
    const QPoint place = widget.value()->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, widget.value()->mapToGlobal(place));
    QApplication::sendEvent(widget.value(), &event);
    app.settle();
    return {};
}

Status enter(Automation& app, ControlHandle* self)
{
    const auto widget = usable(*self);
    if (!widget)
        return widget.status();
    input::focus(*widget.value());
    input::key(*widget.value(), Qt::Key_Return);
    app.settle();
    return {};
}

Status blur(Automation& app, ControlHandle* self)
{
    const auto widget = usable(*self);
    if (!widget)
        return widget.status();
    widget.value()->clearFocus();
    app.settle();
    return {};
}

// State ---------------------------------------------------------------------------------------------------------------

Result<Data> text(Automation&, ControlHandle* self)
{
    const auto widget = alive(*self);
    if (!widget)
        return widget.status();
    const ControlKind& kind = kind_of(*widget.value());
    return kind.text ? Result<Data>(kind.text(*widget.value())) : lacks(*self, "text");
}

Result<Data> focused(Automation&, ControlHandle* self)
{
    return read_from(*self, [](QWidget& widget) {
        const QWidget* focus = widget.window()->focusWidget();
        return Data(focus && focus->hasFocus() && (focus == &widget || widget.isAncestorOf(focus)));
    });
}

Result<Data> enabled(Automation&, ControlHandle* self)
{
    return read_from(*self, [](QWidget& widget) { return Data(widget.isEnabled()); });
}

Result<Data> visible(Automation&, ControlHandle* self)
{
    return read_from(*self, [](QWidget& widget) { return Data(is_shown(widget)); });
}

Result<Data> tooltip(Automation&, ControlHandle* self)
{
    return read_from(*self, [](QWidget& widget) {
        const auto* button = qobject_cast<CButtonST*>(&widget);
        return Data(button ? button->shown_tooltip() : widget.toolTip());
    });
}

Result<Data> color(Automation&, ControlHandle* self)
{
    const auto widget = alive(*self);
    if (!widget)
        return widget.status();
    if (const auto* button = qobject_cast<CButtonST*>(widget.value()))
        return Data(button->text_color());
    const QVariant shown = widget.value()->property("color");
    return shown.canConvert<QColor>() ? Result<Data>(shown.value<QColor>().rgba()) : lacks(*self, "colour");
}

// Numbers -------------------------------------------------------------------------------------------------------------

Result<Data> value(Automation&, ControlHandle* self)
{
    const auto edit = as<CSuperEdit>(alive(*self), *self, "value");
    if (!edit)
        return edit.status();
    return edit.value()->value() ? Data(*edit.value()->value()) : Data();
}

Status set_value(Automation& app, ControlHandle* self, double number)
{
    const auto edit = as<CSuperEdit>(alive(*self), *self, "value");
    return edit ? set_text(app, self, QString::number(number, 'g', 15)) : edit.status();
}

Result<Data> range(Automation&, ControlHandle* self)
{
    const auto edit = as<CSuperEdit>(alive(*self), *self, "value");
    if (!edit)
        return edit.status();
    return Data(Data::Several{{edit.value()->get_min(), edit.value()->get_max(), edit.value()->get_step()}});
}

// Check marks ---------------------------------------------------------------------------------------------------------

/// True, false, or nil for a mark in between; fails for a control without a mark.
Result<std::optional<bool>> mark_of(const ControlHandle& control)
{
    const auto widget = alive(control);
    if (!widget)
        return widget.status();
    if (const auto* box = qobject_cast<QCheckBox*>(widget.value()); box && box->checkState() == Qt::PartiallyChecked)
        return std::optional<bool>();
    if (const auto* button = qobject_cast<QAbstractButton*>(widget.value()); button && button->isCheckable())
        return std::optional(button->isChecked());
    if (const auto* box = qobject_cast<QGroupBox*>(widget.value()); box && box->isCheckable())
        return std::optional(box->isChecked());
    return lacks(control, "check mark");
}

Result<Data> checked(Automation&, ControlHandle* self)
{
    const auto mark = mark_of(*self);
    if (!mark)
        return mark.status();
    return mark.value() ? Data(*mark.value()) : Data();
}

Status set_checked(Automation& app, ControlHandle* self, bool wanted)
{
    // A mark in between may need two clicks.
    for (int clicks = 0; clicks < 3; ++clicks) {
        const auto mark = mark_of(*self);
        if (!mark)
            return mark.status();
        if (mark.value() == wanted)
            return {};
        if (auto status = click(app, self); !status)
            return status;
    }
    return self->error(wanted ? QStringLiteral("stays unchecked") : QStringLiteral("stays checked"));
}

// Entries -------------------------------------------------------------------------------------------------------------

Result<Data> items(Automation&, ControlHandle* self)
{
    const auto widget = alive(*self);
    if (!widget)
        return widget.status();
    const ControlKind& kind = kind_of(*widget.value());
    return kind.items ? Result<Data>(kind.items(*widget.value())) : lacks(*self, "entries");
}

Result<Data> index(Automation&, ControlHandle* self)
{
    const auto widget = alive(*self);
    if (!widget)
        return widget.status();
    const ControlKind& kind = kind_of(*widget.value());
    return kind.index ? Result<Data>(kind.index(*widget.value())) : lacks(*self, "entries");
}

Status choose(Automation& app, ControlHandle* self, int entry)
{
    const auto widget = usable(*self);
    if (!widget)
        return widget.status();
    const ControlKind& kind = kind_of(*widget.value());
    if (!kind.choose)
        return lacks(*self, "entries");
    if (entry < 0 || entry >= kind.items(*widget.value()).size())
        return self->error(QStringLiteral("has no entry %1").arg(entry));
    if (!kind.choose(*widget.value(), entry))
        return self->error(QStringLiteral("does not let entry %1 be chosen").arg(entry));
    app.settle();
    return {};
}

constexpr Binding methods[] = {
    {"click", "self", binding<click>},
    {"right_click", "self", binding<right_click>},
    {"text", "self", binding<text>},
    {"set_text", "self s", binding<set_text>},
    {"type", "self text", binding<type>},
    {"key", "self name mods", binding<key>},
    {"enter", "self", binding<enter>},
    {"blur", "self", binding<blur>},
    {"focused", "self", binding<focused>},
    {"value", "self", binding<value>},
    {"set_value", "self n", binding<set_value>},
    {"range", "self", binding<range>},
    {"checked", "self", binding<checked>},
    {"set_checked", "self b", binding<set_checked>},
    {"enabled", "self", binding<enabled>},
    {"visible", "self", binding<visible>},
    {"tooltip", "self", binding<tooltip>},
    {"color", "self", binding<color>},
    {"items", "self", binding<items>},
    {"index", "self", binding<index>},
    {"choose", "self i", binding<choose>},
    {"rows", "self", binding<rows>},
    {"columns", "self", binding<columns>},
    {"icons", "self", binding<icons>},
    {"select", "self i", binding<select_rows>},
    {"selected", "self", binding<selected_rows>},
    {"click_cell", "self row column mods", binding<click_cell>},
    {"drag_row", "self row onto place", binding<drag_row>},
    {"cell_icons", "self row column", binding<cell_icons>},
    {"click_icon", "self row column icon", binding<click_icon>},
    {"double_click", "self row", binding<double_click_row>},
};

} // namespace

void add_control_type(lua_State* lua, Automation& app)
{
    add_type<ControlHandle>(lua, app, methods);
}

} // namespace tarn::script
