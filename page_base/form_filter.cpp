#include "form_filter.h"

#include "bound_page.h"
#include "core/language.h"
#include "core/template_caption.h"
#include "frame/dlg_group.h"
#include "frame/rollup.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QToolButton>
#include <QTranslator>

#include <algorithm>
#include <map>

namespace tarn {

namespace {

/// Marks a widget that the filter hid; others that are hidden are left alone.
constexpr const char* hidden_mark = "hidden_by_filter";

/// The captions of the forms in English; they are written in Chinese.
QString in_english(const QString& page_name, const QString& caption)
{
    static const auto english = [] {
        auto translator = std::make_unique<QTranslator>();
        (void)translator->load(QStringLiteral("tarn_en"), gui_ui_resources() + QStringLiteral("/i18n"));
        return translator;
    }();
    return english->translate(page_name.toUtf8().constData(), caption.toUtf8().constData());
}

const CChildDlg* page_of(const QWidget& widget)
{
    for (const QWidget* holder = &widget; holder; holder = holder->parentWidget())
        if (const auto* page = qobject_cast<const CChildDlg*>(holder))
            return page;
    return nullptr;
}

/// The controls of the form in `holder` when all of them are for one attribute, such as a button for each of its values.
std::vector<QWidget*> one_choice(const QWidget& holder)
{
    const auto* page = qobject_cast<const CBoundPage*>(page_of(holder));
    std::vector<QWidget*> controls;
    for (QWidget* widget : holder.findChildren<QWidget*>())
        if (CChildDlg::control_number(widget) >= 0)
            controls.push_back(widget);
    if (!page || controls.size() < 2)
        return {};
    const auto key_of = [page](const QWidget* control) { return page->key_of(CChildDlg::control_number(control)); };
    const FieldKey first = key_of(controls.front());
    const bool is_one = first && std::all_of(controls.begin(), controls.end(), [&](const QWidget* control) {
                            return key_of(control) == first;
                        });
    return is_one ? controls : std::vector<QWidget*>();
}

/// One search over a form. Each visit shows and hides what is in something and answers whether anything of it is shown.
class Filter {
public:
    Filter(const QString& text, bool begins_anew) : m_text(text), m_begins_anew(begins_anew) {}

    bool visit(QWidget& widget, bool all);

private:
    bool visit_rollup(CRollupCtrl& rollup, bool all);
    bool visit_group(CDlgGroup& group, bool all);
    bool visit_layout(QLayout& layout, bool all);
    bool visit_grid(QGridLayout& grid, bool all);
    bool visit_stack(QLayout& layout, bool all);
    bool visit_line(const std::vector<QLayoutItem*>& line, bool all);
    bool visit_item(QLayoutItem& item, bool all);

    bool fits(const QString& caption) const { return caption.contains(m_text, Qt::CaseInsensitive); }
    bool fits(const QWidget& widget) const;
    static void show(QWidget& widget, bool shown);

    QString m_text;
    bool m_begins_anew;
};

void Filter::show(QWidget& widget, bool shown)
{
    const bool was_hidden = widget.property(hidden_mark).toBool();
    if (shown ? !was_hidden : was_hidden || widget.isHidden())
        return;
    widget.setProperty(hidden_mark, shown ? QVariant() : QVariant(true));
    widget.setVisible(shown);
}

bool Filter::fits(const QWidget& widget) const
{
    const CChildDlg* page = page_of(widget);
    const bool shows_value = !qobject_cast<const QLabel*>(&widget) && !qobject_cast<const QAbstractButton*>(&widget);
    for (const char* property : {"text", "title", "toolTip", "accessibleName"}) {
        const QString caption = widget.property(property).toString();
        if (caption.isEmpty() || (shows_value && qstrcmp(property, "text") == 0))
            continue;
        const QString other = VLCMsgIniW::language() == Language::Chinese
            ? in_english(page ? page->page_name() : QString(), caption)
            : template_caption(widget, property);
        if (fits(caption) || fits(other))
            return true;
    }
    const auto* bound = qobject_cast<const CBoundPage*>(page);
    return bound && fits(bound->attribute_of(CChildDlg::control_number(&widget)));
}

bool Filter::visit(QWidget& widget, bool all)
{
    if (auto* rollup = qobject_cast<CRollupCtrl*>(&widget))
        return visit_rollup(*rollup, all);
    if (auto* group = qobject_cast<CDlgGroup*>(&widget))
        return visit_group(*group, all);
    bool any = all || fits(widget);
    if (const auto choice = one_choice(widget); !choice.empty())
        any = any || std::any_of(choice.begin(), choice.end(), [this](const QWidget* one) { return fits(*one); });
    else if (QLayout* layout = widget.layout())
        any = visit_layout(*layout, qobject_cast<QGroupBox*>(&widget) ? any : all);
    if (!qobject_cast<CChildDlg*>(&widget)) // Whether a page is shown is its holder's choice.
        show(widget, any);
    return any;
}

bool Filter::visit_rollup(CRollupCtrl& rollup, bool all)
{
    bool any = false;
    for (int i = 0; i < rollup.page_count(); ++i) {
        CChildDlg& page = *rollup.page(i);
        const bool shown = visit(page, all || fits(rollup.heading_of(&page)->text()));
        rollup.filter_page(i,
                           m_text.isEmpty() ? CRollupCtrl::Filtered::No
                               : !shown     ? CRollupCtrl::Filtered::Out
                                            : CRollupCtrl::Filtered::In,
                           m_begins_anew);
        any = any || shown;
    }
    return any;
}

/// All of its pages, so that each is right when it comes to the front.
bool Filter::visit_group(CDlgGroup& group, bool all)
{
    bool any = false;
    for (int i = 0; i < group.count(); ++i) {
        const bool shown = visit(*group.widget(i), all);
        any = any || (shown && i == group.currentIndex());
    }
    return any;
}

bool Filter::visit_layout(QLayout& layout, bool all)
{
    if (auto* grid = qobject_cast<QGridLayout*>(&layout))
        return visit_grid(*grid, all);
    const auto* box = qobject_cast<const QBoxLayout*>(&layout);
    const bool is_line = box
        && (box->direction() == QBoxLayout::LeftToRight || box->direction() == QBoxLayout::RightToLeft);
    if (!is_line)
        return visit_stack(layout, all);
    std::vector<QLayoutItem*> line;
    for (int i = 0; i < layout.count(); ++i)
        line.push_back(layout.itemAt(i));
    return visit_line(line, all);
}

bool Filter::visit_grid(QGridLayout& grid, bool all)
{
    std::map<int, std::vector<QLayoutItem*>> lines;
    for (int i = 0; i < grid.count(); ++i) {
        int row = 0;
        int column = 0;
        int rows = 0;
        int columns = 0;
        grid.getItemPosition(i, &row, &column, &rows, &columns);
        lines[row].push_back(grid.itemAt(i));
    }
    bool any = false;
    for (const auto& [row, line] : lines)
        any = visit_line(line, all) || any;
    return any;
}

bool Filter::visit_stack(QLayout& layout, bool all)
{
    bool any = false;
    for (int i = 0; i < layout.count(); ++i)
        any = visit_item(*layout.itemAt(i), all) || any;
    return any;
}

bool Filter::visit_item(QLayoutItem& item, bool all)
{
    if (item.layout())
        return visit_layout(*item.layout(), all);
    return item.widget() && visit(*item.widget(), all);
}

/// What stands beside each other is shown together, but boxes that are checked speak for themselves.
bool Filter::visit_line(const std::vector<QLayoutItem*>& line, bool all)
{
    bool any = false;
    bool rest_fits = all;
    std::vector<QWidget*> rest;
    for (QLayoutItem* item : line) {
        QWidget* widget = item->widget();
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        const bool is_box = button && button->isCheckable() && !button->text().isEmpty();
        if (!widget || widget->layout() || is_box) {
            any = visit_item(*item, all) || any;
        } else {
            rest.push_back(widget);
            rest_fits = rest_fits || fits(*widget);
        }
    }
    for (QWidget* widget : rest)
        show(*widget, rest_fits);
    return any || (rest_fits && !rest.empty());
}

} // namespace

bool filter_form(QWidget& form, const QString& text)
{
    constexpr const char* last_text = "filter_text";
    const bool begins_anew = form.property(last_text).toString() != text;
    form.setProperty(last_text, text);
    return Filter(text, begins_anew).visit(form, text.isEmpty());
}

QWidget* first_editor(QWidget& form)
{
    for (QWidget* widget = form.nextInFocusChain(); widget != &form; widget = widget->nextInFocusChain())
        if (form.isAncestorOf(widget) && widget->isVisible() && widget->isEnabled()
            && widget->focusPolicy() & Qt::TabFocus && CChildDlg::control_number(widget) >= 0)
            return widget;
    return nullptr;
}

} // namespace tarn
