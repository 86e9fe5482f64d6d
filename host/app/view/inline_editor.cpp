#include "inline_editor.h"

#include "frame/text_edit.h"

#include <QFocusEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextOption>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr int least_width = 80;    ///< pixels
constexpr int field_margin = 8;    ///< pixels; what a field needs above and below its text together
constexpr int document_margin = 2; ///< pixels

/// `wanted` grown so that a text of the font can be read in it, inside `room`.
QRect field_rect(const QRect& wanted, const QFont& font, const QSize& room)
{
    QRect rect(QPoint(), wanted.size().expandedTo({least_width, QFontMetrics(font).height() + field_margin}));
    rect.setSize(rect.size().boundedTo(room));
    rect.moveCenter(wanted.center());
    rect.moveLeft(std::clamp(rect.left(), 0, room.width() - rect.width()));
    rect.moveTop(std::clamp(rect.top(), 0, room.height() - rect.height()));
    return rect;
}

} // namespace

InlineEditor::InlineEditor(EditableText text, const QRect& place, QWidget& view)
    : QObject(&view), m_view(view), m_field(make_field(text)), m_commit(std::move(text.commit))
{
    m_field->setFont(text.font);
    m_field->setGeometry(field_rect(place, text.font, view.size()));
    m_field->installEventFilter(this);
    m_field->show();
    m_view.setFocusProxy(m_field);
    m_field->setFocus(Qt::MouseFocusReason);
}

QWidget* InlineEditor::make_field(const EditableText& text)
{
    if (!text.multi_line) {
        auto* line = new QLineEdit(text.text, &m_view);
        line->setAlignment(text.alignment);
        line->selectAll();
        return line;
    }
    auto* lines = new TextEdit(text.text, &m_view);
    lines->document()->setDefaultTextOption(QTextOption(text.alignment & Qt::AlignHorizontal_Mask));
    lines->document()->setDocumentMargin(document_margin);
    lines->setTabChangesFocus(true);
    lines->selectAll();
    return lines;
}

QString InlineEditor::text() const
{
    if (const auto* line = qobject_cast<const QLineEdit*>(m_field))
        return line->text();
    return static_cast<const QPlainTextEdit*>(m_field)->toPlainText();
}

void InlineEditor::finish(bool keep)
{
    const auto commit = std::exchange(m_commit, nullptr);
    if (!commit)
        return;
    const QString typed = text();
    const bool had_focus = m_field->hasFocus();
    m_view.setFocusProxy(nullptr);
    if (had_focus)
        m_view.setFocus();
    m_field->hide();
    m_field->deleteLater();
    deleteLater();
    if (keep)
        commit(typed);
}

bool InlineEditor::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        // The field's own menu and the window's menus give the focus back.
        if (reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason)
            finish(true);
        return false;
    }
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool enters = (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)
        && !(key->modifiers() & Qt::ShiftModifier);
    if (!enters && key->key() != Qt::Key_Escape)
        return false;
    event->accept();
    if (event->type() == QEvent::KeyPress)
        finish(enters);
    return true;
}

} // namespace tarn
