#include "lua_text.h"
#include "script_edit.h"
#include "script_marks.h"
#include "widgets/theme.h"

#include <QEvent>
#include <QFontDatabase>

// The look of the editor of scripts.

namespace {

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
    {QsciLexerLua::KeywordSet5, 0x00696b, 0x63c8c9},    {QsciLexerLua::Label, 0x8a4b00, 0xe0a96d},
};
enum WordSet : ulong { keyword_words, function_words, member_words, facility_words, verb_words }; ///< the lexer's

QFont script_font()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const QString family = QFontInfo(font).family();
    // Characters that the font has not come from a font of equal widths too where there is one.
    if (QFont::substitutes(family).isEmpty())
        QFont::insertSubstitutions(family,
                                   {QStringLiteral("Noto Sans Mono CJK SC"), QStringLiteral("Noto Sans CJK SC"),
                                    QStringLiteral("Microsoft YaHei"), QStringLiteral("PingFang SC")});
    font.setFamily(family);
    return font;
}

QColor mixed(const QColor& a, const QColor& b, double part_of_b)
{
    const auto mix = [part_of_b](int x, int y) { return int(x + (y - x) * part_of_b + 0.5); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

} // namespace

void CScriptEdit::define_marks()
{
    setLexer(new QsciLexerLua(this));
    setMarginType(tarn::number_margin, NumberMargin);
    setMarginMarkerMask(tarn::number_margin, 0);
    setMarginType(tarn::mark_margin, SymbolMargin);
    setMarginMarkerMask(tarn::mark_margin, 1 << tarn::fault_marker);
    setMarginWidth(tarn::mark_margin, 12);
    setFolding(BoxedTreeFoldStyle, tarn::fold_margin);
    markerDefine(Circle, tarn::fault_marker);
    indicatorDefine(SquigglePixmapIndicator, tarn::fault_indicator);
    indicatorDefine(StraightBoxIndicator, tarn::place_indicator);
    setIndicatorDrawUnder(true, tarn::place_indicator);
    setBraceMatching(SloppyBraceMatch);
    setCaretLineVisible(true);
    setCaretWidth(2);
    setIndentationGuides(true);
    SendScintilla(SCI_SETMARGINLEFT, 0UL, 4L);
    SendScintilla(SCI_SETEXTRAASCENT, 1);
    SendScintilla(SCI_SETEXTRADESCENT, 1);
}

void CScriptEdit::use_colors()
{
    const QPalette colors = palette();
    const QColor base = colors.color(QPalette::Base);
    const QColor text = colors.color(QPalette::Text);
    const QColor margin = mixed(base, colors.color(QPalette::Window), 0.6);
    const QColor fault = tarn::readable_on(QColor(0xe5484d), base, 3);
    const QFont font = script_font();
    lexer()->setDefaultPaper(base);
    lexer()->setDefaultColor(text);
    lexer()->setDefaultFont(font);
    lexer()->setPaper(base);
    lexer()->setColor(text);
    lexer()->setFont(font);
    for (const StyleColor& style : style_colors)
        lexer()->setColor(QColor(tarn::is_dark() ? style.dark : style.light), style.style);
    setPaper(base);
    setCaretForegroundColor(text);
    setCaretLineBackgroundColor(mixed(base, text, 0.05));
    setSelectionBackgroundColor(mixed(base, colors.color(QPalette::Active, QPalette::Highlight), 0.35));
    resetSelectionForegroundColor();
    setMarginsFont(font);
    setMarginsBackgroundColor(margin);
    setMarginsForegroundColor(colors.color(QPalette::PlaceholderText));
    setIndentationGuidesForegroundColor(mixed(base, text, 0.2));
    setIndentationGuidesBackgroundColor(base);
    setMatchedBraceBackgroundColor(mixed(base, colors.color(QPalette::Link), 0.25));
    setMatchedBraceForegroundColor(text);
    setUnmatchedBraceBackgroundColor(base);
    setUnmatchedBraceForegroundColor(fault);
    setMarkerBackgroundColor(fault, tarn::fault_marker);
    setMarkerForegroundColor(fault, tarn::fault_marker);
    setIndicatorForegroundColor(fault, tarn::fault_indicator);
    QColor place = colors.color(QPalette::Link);
    place.setAlpha(60);
    setIndicatorForegroundColor(place, tarn::place_indicator);
    setCallTipsBackgroundColor(colors.color(QPalette::ToolTipBase));
    setCallTipsForegroundColor(mixed(colors.color(QPalette::ToolTipText), colors.color(QPalette::ToolTipBase), 0.25));
    setCallTipsHighlightColor(colors.color(QPalette::ToolTipText));
    use_fold_colors();
    fit_number_margin();
}

void CScriptEdit::use_fold_colors()
{
    const QColor margin = mixed(palette().color(QPalette::Base), palette().color(QPalette::Window), 0.6);
    setFoldMarginColors(margin, margin);
    for (int marker = SC_MARKNUM_FOLDEREND; marker <= int(SC_MARKNUM_FOLDEROPEN); ++marker) {
        SendScintilla(SCI_MARKERSETFORE, ulong(marker), margin);
        SendScintilla(SCI_MARKERSETBACK, ulong(marker), palette().color(QPalette::PlaceholderText));
    }
}

void CScriptEdit::fit_number_margin()
{
    const auto digits = std::max<qsizetype>(3, QString::number(lines()).size());
    setMarginWidth(tarn::number_margin, QString(digits + 1, QLatin1Char('0')));
}

void CScriptEdit::offer(const std::vector<tarn::ScriptVerb>& verbs, const QStringList& field_names,
                        const QMap<QString, QStringList>& names)
{
    m_words = tarn::ScriptWords(verbs, field_names, tarn::ScriptRuntime::library(), names);
    // The lexer's own words are others: scripts have no files and processes.
    const auto set_words = [this](WordSet set, const QStringList& words) {
        SendScintilla(SCI_SETKEYWORDS, ulong(set), words.join(QLatin1Char(' ')).toUtf8().constData());
    };
    set_words(keyword_words, tarn::lua_keywords());
    set_words(function_words, m_words.library(false));
    set_words(member_words, m_words.library(true));
    set_words(facility_words, {});
    set_words(verb_words, m_words.verb_names());
    recolor();
}

void CScriptEdit::changeEvent(QEvent* event)
{
    QsciScintilla::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && lexer())
        use_colors();
}
