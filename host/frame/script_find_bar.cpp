#include "script_find_bar.h"

#include "core/language.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

namespace tarn {

namespace {

using namespace std::chrono_literals;

constexpr auto refresh_delay = 150ms; ///< after the last change of the text

} // namespace

ScriptFindBar::ScriptFindBar(CScriptEdit& edit, const Controls& controls)
    : m_edit(edit), m_controls(controls), m_refresh_timer(new QTimer(this))
{
    m_controls.bar->hide();
    m_refresh_timer->setSingleShot(true);
    m_refresh_timer->setInterval(refresh_delay);
    connect(m_refresh_timer, &QTimer::timeout, this, &ScriptFindBar::refresh);
    connect(&m_edit, &QsciScintilla::textChanged, m_refresh_timer, qOverload<>(&QTimer::start));
    connect(m_controls.what, &QLineEdit::textChanged, this, [this] {
        m_edit.find_here(search());
        refresh();
    });
    connect(m_controls.match_case, &QCheckBox::toggled, this, &ScriptFindBar::refresh);
    connect(m_controls.whole_word, &QCheckBox::toggled, this, &ScriptFindBar::refresh);
}

CScriptEdit::Search ScriptFindBar::search() const
{
    return {m_controls.what->text(), m_controls.match_case->isChecked(), m_controls.whole_word->isChecked()};
}

void ScriptFindBar::open(bool to_replace)
{
    m_controls.bar->show();
    const QString selected = m_edit.selectedText();
    if (!selected.isEmpty() && !selected.contains(u'\n') && !m_controls.what->hasFocus())
        m_controls.what->setText(selected);
    QLineEdit* field = to_replace ? m_controls.by : m_controls.what;
    field->setFocus();
    field->selectAll();
    refresh();
}

bool ScriptFindBar::close()
{
    if (m_controls.bar->isHidden())
        return false;
    m_controls.bar->hide();
    m_edit.show_places({});
    m_edit.setFocus();
    return true;
}

void ScriptFindBar::find(bool forward)
{
    if (search().what.isEmpty())
        return open(false);
    m_edit.find(search(), forward);
    refresh();
}

void ScriptFindBar::replace()
{
    m_edit.replace_next(search(), m_controls.by->text());
    refresh();
}

void ScriptFindBar::replace_all()
{
    const int count = m_edit.replace_all(search(), m_controls.by->text());
    refresh();
    m_refresh_timer->stop(); // What was done stays to be read.
    show_result(lang(u"已替换 %1 处", u"%1 replaced").arg(count));
}

bool ScriptFindBar::enter(bool shift)
{
    const bool in_what = m_controls.what->hasFocus();
    const bool in_by = m_controls.by->hasFocus();
    if (in_what)
        find(!shift);
    else if (in_by)
        replace();
    return in_what || in_by;
}

void ScriptFindBar::refresh()
{
    if (m_controls.bar->isHidden())
        return;
    const auto [count, selected] = m_edit.show_places(search());
    if (search().what.isEmpty())
        show_result({});
    else if (count == 0)
        show_result(lang(u"没有找到", u"Not found"));
    else if (selected == 0)
        show_result(lang(u"%1 处", u"%1 found").arg(count));
    else
        show_result(lang(u"第 %1 / %2 处", u"%1 of %2").arg(selected).arg(count));
}

void ScriptFindBar::show_result(const QString& text) const
{
    m_controls.result->setText(text);
}

} // namespace tarn
