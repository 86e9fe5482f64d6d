#include "script_edit.h"

#include "boxes.h"
#include "core/language.h"
#include "script_fault.h"
#include "script_marks.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QTimer>
#include <QToolTip>

#include <algorithm>

using tarn::lang;

namespace {

using namespace std::chrono_literals;

constexpr auto check_delay = 300ms; ///< after the last key
constexpr int indent_width = 4;

} // namespace

CScriptEdit::CScriptEdit(QWidget* parent) : QsciScintilla(parent), m_check_timer(new QTimer(this))
{
    setUtf8(true);
    setEolMode(EolUnix);
    setIndentationsUseTabs(false);
    setTabWidth(indent_width);
    setBackspaceUnindents(true);
    // Completion, tips and indentation hang on keys, so that a text that is put in as a whole stays as it is.
    setAutoIndent(false);
    setAutoCompletionSource(AcsNone);
    setCallTipsStyle(CallTipsNone);
    SendScintilla(SCI_AUTOCSETSEPARATOR, ulong('\n'));
    SendScintilla(SCI_AUTOCSETIGNORECASE, true);
    SendScintilla(SCI_AUTOCSETORDER, SC_ORDER_PERFORMSORT);
    SendScintilla(SCI_AUTOCSETDROPRESTOFWORD, true);
    SendScintilla(SCI_AUTOCSETMAXHEIGHT, 10);
    SendScintilla(SCI_CALLTIPSETPOSITION, true); // Above the line, which is still being typed.
    setScrollWidth(1);
    setScrollWidthTracking(true);
    define_marks();
    offer({});
    use_colors();

    m_check_timer->setSingleShot(true);
    m_check_timer->setInterval(check_delay);
    connect(m_check_timer, &QTimer::timeout, this, &CScriptEdit::check);
    connect(this, &QsciScintilla::textChanged, m_check_timer, qOverload<>(&QTimer::start));
    connect(this, &QsciScintilla::linesChanged, this, &CScriptEdit::fit_number_margin);
    connect(this, &QsciScintillaBase::SCN_ZOOM, this, &CScriptEdit::fit_number_margin);
    connect(this, &QsciScintilla::cursorPositionChanged, this, &CScriptEdit::update_call_tip);
}

QString CScriptEdit::script() const
{
    QString all = text();
    return all.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

void CScriptEdit::go_to_line(int line)
{
    const int reachable = std::clamp(line, 0, lines() - 1);
    ensureLineVisible(reachable);
    setCursorPosition(reachable, 0);
    setFocus();
}

QString CScriptEdit::text_before(long position) const
{
    // bytes() answers a zero too many.
    return QString::fromUtf8(bytes(0, int(position)).left(position));
}

qsizetype CScriptEdit::cursor_place() const
{
    return text_before(SendScintilla(SCI_GETCURRENTPOS)).size();
}

long CScriptEdit::position_of(const QString& all, qsizetype place) const
{
    return long(QStringView(all).left(place).toUtf8().size());
}

// Faults --------------------------------------------------------------------------------------------------------------

void CScriptEdit::check()
{
    markerDeleteAll(tarn::fault_marker);
    clearIndicatorRange(0, 0, lines() - 1, lineLength(lines() - 1), tarn::fault_indicator);
    m_faults = tarn::ScriptRuntime::check(script());
    for (tarn::ScriptError& fault : m_faults) {
        fault.line = std::clamp(fault.line, 1, lines());
        mark_fault(fault);
    }
    if (m_faults.empty())
        Q_EMIT checked({}, -1);
    else
        Q_EMIT checked(tarn::fault_text(m_faults.front()), m_faults.front().line - 1);
}

void CScriptEdit::mark_fault(const tarn::ScriptError& fault)
{
    const int line = fault.line - 1;
    markerAdd(line, tarn::fault_marker);
    const QString words = text(line);
    int begin = 0;
    while (begin < words.size() && words[begin].isSpace())
        ++begin;
    fillIndicatorRange(line, begin, line, int(words.trimmed().size()) + begin, tarn::fault_indicator);
}

std::vector<int> CScriptEdit::faulty_lines()
{
    std::vector<int> found;
    constexpr unsigned int mask = 1U << tarn::fault_marker;
    for (int line = markerFindNext(0, mask); line >= 0; line = markerFindNext(line + 1, mask))
        found.push_back(line);
    return found;
}

// What the mouse asks -------------------------------------------------------------------------------------------------

QString CScriptEdit::tip_at(QPoint place) const
{
    const int line = lineAt(place);
    for (const tarn::ScriptError& fault : m_faults)
        if (fault.line - 1 == line)
            return fault.message;
    const long position = SendScintilla(SCI_POSITIONFROMPOINTCLOSE, ulong(place.x()), long(place.y()));
    if (position < 0)
        return {};
    const auto tip = m_words.name_tip(text(), text_before(position).size());
    return tip ? tip->text : QString();
}

bool CScriptEdit::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QsciScintilla::viewportEvent(event);
    const auto& help = static_cast<QHelpEvent&>(*event);
    const QString tip = is_active(SCI_AUTOCACTIVE) || is_active(SCI_CALLTIPACTIVE) ? QString() : tip_at(help.pos());
    QToolTip::showText(help.globalPos(), tip, viewport());
    return true;
}

void CScriptEdit::contextMenuEvent(QContextMenuEvent* event)
{
    const bool selected = hasSelectedText();
    const bool can_paste = is_active(SCI_CANPASTE);
    struct Command {
        QString text;
        bool enabled;
        std::function<void()> run;
    };
    const std::vector<Command> commands{
        {lang(u"撤销", u"Undo"), isUndoAvailable(), [this] { undo(); }},
        {lang(u"重做", u"Redo"), isRedoAvailable(), [this] { redo(); }},
        {},
        {lang(u"剪切", u"Cut"), selected, [this] { cut(); }},
        {lang(u"复制", u"Copy"), selected, [this] { copy(); }},
        {lang(u"粘贴", u"Paste"), can_paste, [this] { paste(); }},
        {lang(u"全选", u"Select All"), length() > 0, [this] { selectAll(); }},
        {},
        {lang(u"注释或取消注释", u"Toggle Comment"), true, [this] { toggle_comment(); }},
        {lang(u"补全", u"Complete"), true, [this] { complete(true); }},
    };
    tarn::boxes::Menu menu{.items = {}, .place = event->globalPos()};
    for (std::size_t i = 0; i < commands.size(); ++i)
        menu.items.push_back(
            {.id = commands[i].run ? int(i) + 1 : 0, .text = commands[i].text, .enabled = commands[i].enabled});
    if (const int chosen = tarn::boxes::menu(this, menu); chosen > 0)
        commands[std::size_t(chosen) - 1].run();
}
