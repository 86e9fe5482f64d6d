#include "entered_text.h"

#include "frame/child_dlg.h"
#include "page_base/row_mark.h"

#include <QKeyEvent>
#include <QLineEdit>

#include <utility>

namespace tarn {

EnterWatch::EnterWatch(CChildDlg& page, std::function<void()> entered) : QObject(&page), m_entered(std::move(entered))
{
    for (QWidget* control : page.controls())
        control->installEventFilter(this);
}

bool EnterWatch::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<const QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter)
            m_entered();
    }
    return false;
}

EnteredText::EnteredText(QLineEdit& edit) : m_edit(edit)
{
    auto* input = new RowInput(edit);
    input->keeps_undo = [&edit] { return edit.isModified(); };
}

void EnteredText::show(const QString& text, quint32 object)
{
    const bool is_same = std::exchange(m_object, object) == object;
    if (is_same && m_edit.isModified() && m_edit.hasFocus())
        return;
    if (m_edit.text() != text) {
        m_edit.setText(text);
        m_edit.setCursorPosition(0);
    }
    m_edit.setModified(false);
}

QString EnteredText::text() const
{
    return m_edit.text();
}

void EnteredText::done()
{
    m_edit.setModified(false);
}

} // namespace tarn
