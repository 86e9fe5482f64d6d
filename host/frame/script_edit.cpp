#include "script_edit.h"

#include "core/language.h"
#include "engine/script/script_runtime.h"
#include "widgets/theme.h"

#include <QFontDatabase>
#include <QRegularExpression>
#include <QTimer>

#include <algorithm>

namespace {

using namespace std::chrono_literals;

constexpr auto check_delay = 300ms; ///< after the last key
constexpr int number_margin = 0;
constexpr int mark_margin = 1;
constexpr int fold_margin = 2;
constexpr int fault_marker = 1;
constexpr int indent_width = 4;

struct StyleColor {
    int style;
    QRgb light;
    QRgb dark;
};
constexpr StyleColor style_colors[] = {
    {QsciLexerLua::Comment, 0x5b7a5b, 0x7f9f7f},        {QsciLexerLua::LineComment, 0x5b7a5b, 0x7f9f7f},
    {QsciLexerLua::Number, 0x8a4b00, 0xe0a96d},         {QsciLexerLua::Keyword, 0x0b49b0, 0x7fb2ff},
    {QsciLexerLua::String, 0x9c2a2a, 0xe08f8f},         {QsciLexerLua::Character, 0x9c2a2a, 0xe08f8f},
    {QsciLexerLua::LiteralString, 0x9c2a2a, 0xe08f8f},  {QsciLexerLua::UnclosedString, 0xc00000, 0xff6b6b},
    {QsciLexerLua::BasicFunctions, 0x6b2f9c, 0xc59cf0}, {QsciLexerLua::StringTableMathsFunctions, 0x6b2f9c, 0xc59cf0},
};

QString entry_of(const tarn::ScriptVerb& verb)
{
    QStringList parameters;
    for (const tarn::ScriptParameter& parameter : verb.parameters) {
        const QString name = QLatin1String(parameter.name);
        parameters.append(parameter.optional ? QStringLiteral("[%1]").arg(name) : name);
    }
    if (verb.more)
        parameters.append(QStringLiteral("..."));
    return QStringLiteral("%1(%2) %3")
        .arg(QLatin1String(verb.name), parameters.join(QStringLiteral(", ")), verb.about.text());
}

// QScintilla's own list is prepared by a thread, which does not bear the editor being closed meanwhile.
class Words : public QsciAbstractAPIs {
public:
    Words(QsciLexer* lexer, const QStringList& entries) : QsciAbstractAPIs(lexer), m_entries(entries) {}

    void updateAutoCompletionList(const QStringList& context, QStringList& list) override
    {
        for (const QString& entry : m_entries)
            if (!context.isEmpty() && entry.startsWith(context.last()))
                list.append(entry.section(QLatin1Char('('), 0, 0));
    }

    QStringList callTips(const QStringList& context, int, QsciScintilla::CallTipsStyle, QList<int>&) override
    {
        // The last word is what stands after the bracket.
        const qsizetype name = context.size() - 2;
        return name < 0 ? QStringList()
                        : m_entries.filter(QRegularExpression(
                            QStringLiteral("^%1\\(").arg(QRegularExpression::escape(context.at(name)))));
    }

private:
    QStringList m_entries;
};

} // namespace

CScriptEdit::CScriptEdit(QWidget* parent) : QsciScintilla(parent), m_check_timer(new QTimer(this))
{
    setUtf8(true);
    setEolMode(EolUnix);
    setLexer(new QsciLexerLua(this));
    setMarginType(number_margin, NumberMargin);
    setMarginWidth(number_margin, QStringLiteral("00000"));
    setMarginWidth(mark_margin, QStringLiteral("0"));
    setMarginMarkerMask(mark_margin, 1 << fault_marker);
    setFolding(PlainFoldStyle, fold_margin);
    markerDefine(Circle, fault_marker);
    setBraceMatching(SloppyBraceMatch);
    setAutoIndent(true);
    setIndentationsUseTabs(false);
    setTabWidth(indent_width);
    setCaretLineVisible(true);
    setAutoCompletionSource(AcsAll);
    setAutoCompletionThreshold(2);
    setCallTipsStyle(CallTipsNoContext);
    setScrollWidth(1);
    setScrollWidthTracking(true);
    use_colors();

    m_check_timer->setSingleShot(true);
    m_check_timer->setInterval(check_delay);
    connect(m_check_timer, &QTimer::timeout, this, &CScriptEdit::check);
    connect(this, &QsciScintilla::textChanged, m_check_timer, qOverload<>(&QTimer::start));
}

void CScriptEdit::use_colors()
{
    const QPalette colors = palette();
    const QColor base = colors.color(QPalette::Base);
    const QColor text = colors.color(QPalette::Text);
    const QColor margin = colors.color(QPalette::Window);
    const QColor line = colors.color(QPalette::AlternateBase);
    lexer()->setDefaultPaper(base);
    lexer()->setDefaultColor(text);
    lexer()->setPaper(base);
    lexer()->setColor(text);
    lexer()->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    for (const StyleColor& style : style_colors)
        lexer()->setColor(QColor(tarn::is_dark() ? style.dark : style.light), style.style);
    setCaretForegroundColor(text);
    setCaretLineBackgroundColor(line);
    setSelectionBackgroundColor(colors.color(QPalette::Highlight));
    setSelectionForegroundColor(colors.color(QPalette::HighlightedText));
    setMarginsBackgroundColor(margin);
    setMarginsForegroundColor(colors.color(QPalette::PlaceholderText));
    setFoldMarginColors(margin, margin);
    setMatchedBraceBackgroundColor(line);
    setMatchedBraceForegroundColor(colors.color(QPalette::Link));
    setMarkerBackgroundColor(Qt::red, fault_marker);
    setCallTipsBackgroundColor(colors.color(QPalette::ToolTipBase));
    setCallTipsForegroundColor(colors.color(QPalette::ToolTipText));
}

void CScriptEdit::offer(const std::vector<tarn::ScriptVerb>& verbs)
{
    QStringList entries;
    for (const tarn::ScriptVerb& verb : verbs)
        entries.append(entry_of(verb));
    new Words(lexer(), entries); // the lexer owns it
}

QString CScriptEdit::script() const
{
    QString all = text();
    return all.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

void CScriptEdit::go_to_line(int line)
{
    const int reachable = std::clamp(line, 0, lines() - 1);
    setCursorPosition(reachable, 0);
    ensureLineVisible(reachable);
    setFocus();
}

bool CScriptEdit::find(const QString& what, bool match_case, bool whole_word, bool forward)
{
    int line = 0;
    int column = 0;
    int end_line = 0;
    int end_column = 0;
    getSelection(&line, &column, &end_line, &end_column);
    // Backwards from the selection's begin, or the same place would be found again.
    if (!forward && hasSelectedText())
        setCursorPosition(line, column);
    return !what.isEmpty() && findFirst(what, false, match_case, whole_word, true, forward);
}

void CScriptEdit::replace_next(const QString& what, const QString& by, bool match_case, bool whole_word)
{
    const auto sensitivity = match_case ? Qt::CaseSensitive : Qt::CaseInsensitive;
    if (!what.isEmpty() && selectedText().compare(what, sensitivity) == 0)
        replaceSelectedText(by);
    find(what, match_case, whole_word, true);
}

int CScriptEdit::replace_all(const QString& what, const QString& by, bool match_case, bool whole_word)
{
    if (what.isEmpty())
        return 0;
    int count = 0;
    beginUndoAction();
    // Without wrapping, so that what was put in is not searched.
    for (bool found = findFirst(what, false, match_case, whole_word, false, true, 0, 0); found; found = findNext()) {
        replace(by);
        ++count;
    }
    endUndoAction();
    return count;
}

std::vector<int> CScriptEdit::faulty_lines()
{
    std::vector<int> found;
    for (int line = markerFindNext(0, 1 << fault_marker); line >= 0; line = markerFindNext(line + 1, 1 << fault_marker))
        found.push_back(line);
    return found;
}

void CScriptEdit::check()
{
    markerDeleteAll(fault_marker);
    const std::vector<tarn::ScriptError> faults = tarn::ScriptRuntime::check(script());
    for (const tarn::ScriptError& fault : faults)
        markerAdd(std::clamp(fault.line - 1, 0, lines() - 1), fault_marker);
    Q_EMIT checked(
        faults.empty()
            ? QString()
            : tarn::lang(u"第 %1 行：%2", u"Line %1: %2").arg(faults.front().line).arg(faults.front().message));
}
