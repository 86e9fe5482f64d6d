#include "row_mark.h"

#include "core/language.h"
#include "frame/menufun.h"
#include "widgets/super_edit.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>

namespace tarn {

namespace {

// Pixels. The forms leave at least 4 between controls.
constexpr int bar_width = 2;
constexpr int bar_gap = 1;
constexpr int badge_size = 9;
constexpr int badge_reach = 4; ///< how far the badge stands out of the control

constexpr int diamond_reach = 4; ///< from its middle

constexpr QRgb badge_color = 0xffd07a00;
constexpr QRgb keys_color = 0xff9a5fd0;
constexpr QRgb unrecorded_color = 0xffe0453a;

enum Command : int { cut = 1, copy, paste, remove, select_all, step_up, step_down, to_default, why };

QLineEdit* line_of(QWidget& control)
{
    if (auto* line = qobject_cast<QLineEdit*>(&control))
        return line;
    return qobject_cast<CSuperEdit*>(&control) ? control.findChild<QLineEdit*>() : nullptr;
}

void add_text_commands(std::vector<boxes::MenuItem>& items, bool has_selection)
{
    items.push_back({.id = cut, .text = lang(u"剪切", u"Cut"), .enabled = has_selection});
    items.push_back({.id = copy, .text = lang(u"复制", u"Copy"), .enabled = has_selection});
    items.push_back({.id = paste, .text = lang(u"粘贴", u"Paste")});
    items.push_back({.id = remove, .text = lang(u"删除", u"Delete"), .enabled = has_selection});
    items.push_back({.id = select_all, .text = lang(u"全选", u"Select All")});
}

template <class TextEdit>
void run_on_text(TextEdit& edit, int command)
{
    switch (command) {
    case cut: edit.cut(); break;
    case copy: edit.copy(); break;
    case paste: edit.paste(); break;
    case select_all: edit.selectAll(); break;
    default: break;
    }
}

} // namespace

RowMark::RowMark(QWidget& control, QWidget& page) : QWidget(&page), m_control(control)
{
    setObjectName(QStringLiteral("mark_") + control.objectName());
    setCursor(Qt::ArrowCursor);
    for (QWidget* holder = &control; holder && holder != &page; holder = holder->parentWidget())
        holder->installEventFilter(this);
    hide();
}

void RowMark::show_state(const State& state)
{
    m_state = state;
    QStringList told;
    if (state.mixed)
        told.append(lang(u"所选对象的值不一致", u"The selected objects differ"));
    if (state.drive != Drive::None)
        told.append(lang(u"由时间轴“%1”驱动", u"Driven by the timebar \"%1\"").arg(state.driver));
    if (state.drive == Drive::Unrecorded)
        told.append(lang(u"已修改，尚未记录", u"Changed and not recorded"));
    if (state.changed)
        told.append(lang(u"不是默认值", u"Not the default"));
    setToolTip(told.join(QLatin1Char('\n')));
    m_control.setAccessibleDescription(told.join(QStringLiteral("; ")));
    follow_control();
}

void RowMark::follow_control()
{
    const bool shown = !(m_state == State()) && m_control.isVisibleTo(parentWidget());
    setVisible(shown);
    if (!shown)
        return;
    const QRect control(m_control.mapTo(parentWidget(), QPoint()), m_control.size());
    setGeometry(control.adjusted(-badge_reach, -badge_reach, 0, 0));
    QRegion area;
    if (m_state.changed)
        area += bar();
    if (m_state.drive != Drive::None)
        area += diamond().boundingRect().adjusted(-1, -1, 2, 2);
    if (m_state.mixed)
        area += QRect(0, 0, badge_size, badge_size);
    setMask(area);
    raise();
    update();
}

QRect RowMark::bar() const
{
    return {badge_reach - bar_gap - bar_width, badge_reach, bar_width, height() - badge_reach};
}

QPolygon RowMark::diamond() const
{
    // In the corner, where it covers no letter of a narrow field.
    const QPoint middle(diamond_reach + 1 + (m_state.mixed ? badge_size : 0), badge_reach + 1);
    return QPolygon({middle - QPoint(diamond_reach, 0), middle - QPoint(0, diamond_reach),
                     middle + QPoint(diamond_reach, 0), middle + QPoint(0, diamond_reach)});
}

void RowMark::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_state.changed)
        painter.fillRect(bar(), palette().color(QPalette::Active, QPalette::Highlight));
    if (m_state.drive != Drive::None) {
        const QColor drive(m_state.drive == Drive::Keys ? keys_color : unrecorded_color);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(drive, 1.5));
        painter.setBrush(m_state.drive == Drive::Keys ? drive : palette().color(QPalette::Base));
        painter.drawConvexPolygon(diamond());
        painter.setRenderHint(QPainter::Antialiasing, false);
    }
    if (!m_state.mixed)
        return;
    // "Not equal": legible without its colour.
    painter.fillRect(0, 0, badge_size, badge_size, QColor(badge_color));
    painter.setPen(Qt::white);
    painter.drawLine(2, 3, 6, 3);
    painter.drawLine(2, 5, 6, 5);
    painter.drawLine(3, 7, 5, 1);
}

void RowMark::mousePressEvent(QMouseEvent*)
{
    Q_EMIT clicked();
}

bool RowMark::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::ShowToParent:
    case QEvent::HideToParent: follow_control(); break;
    default: break;
    }
    return false;
}

RowInput::RowInput(QWidget& control) : QObject(&control), m_control(control)
{
    control.installEventFilter(this);
    if (QLineEdit* line = line_of(control); line && line != &control)
        line->installEventFilter(this);
    if (auto* text = qobject_cast<QPlainTextEdit*>(&control))
        text->viewport()->installEventFilter(this);
}

bool RowInput::takes_key(QEvent& event) const
{
    auto& key = static_cast<QKeyEvent&>(event);
    return (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo)) && !(keeps_undo && keeps_undo());
}

bool RowInput::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        if (!takes_key(*event))
            return false;
        event->ignore(); // The program's own command gets it.
        return true;
    case QEvent::KeyPress: return takes_key(*event); // There was no such command just now.
    case QEvent::ContextMenu: open_menu(); return true;
    default: return false;
    }
}

void RowInput::open_menu()
{
    QLineEdit* line = line_of(m_control);
    auto* text = qobject_cast<QPlainTextEdit*>(&m_control);
    auto* number = qobject_cast<CSuperEdit*>(&m_control);
    std::vector<boxes::MenuItem> items;
    if (line || text)
        add_text_commands(items, line ? line->hasSelectedText() : text->textCursor().hasSelection());
    if (number) {
        items.push_back({});
        items.push_back({.id = step_up, .text = lang(u"增大", u"Step Up")});
        items.push_back({.id = step_down, .text = lang(u"减小", u"Step Down")});
    }
    if (can_reset) {
        if (!items.empty())
            items.push_back({});
        items.push_back({.id = to_default, .text = lang(u"恢复默认值", u"Reset to Default"), .enabled = can_reset()});
    }
    if (explain)
        items.push_back({.id = why, .text = lang(u"为什么是这个值？", u"Why This Value?")});
    if (items.empty())
        return;
    const int command = menufun::pop_menu(&m_control, items);
    if (command == to_default && reset)
        reset();
    else if (command == why)
        explain();
    else if (command == step_up || command == step_down)
        number->stepBy(command == step_up ? 1 : -1);
    else if (command == remove)
        line ? line->del() : text->textCursor().removeSelectedText();
    else if (line)
        run_on_text(*line, command);
    else if (text)
        run_on_text(*text, command);
}

} // namespace tarn
