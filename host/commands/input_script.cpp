#include "input_script.h"

#include "core/language.h"

#include <QKeySequence>
#include <QStringDecoder>

#include <cmath>
#include <optional>

namespace tarn {

namespace {

using Kind = InputStep::Kind;

constexpr qsizetype most_bytes = 16 << 20;
constexpr qsizetype most_lines = 100'000;
constexpr qsizetype longest_line = 10'000;
constexpr double longest_wait = 600;    ///< seconds of one line
constexpr double longest_script = 3600; ///< seconds of all waits and drags
constexpr double farthest = 100'000;    ///< pixels
constexpr qsizetype most_places = 1000; ///< of a drag
constexpr int largest_screen = 16384;

constexpr const char* first_word = "tarn-input";
constexpr int version = 1;

/// Lines of one word and numbers.
struct PlainVerb {
    const char* word;
    Kind kind;
    int places;
    bool has_number;
};
constexpr PlainVerb plain_verbs[] = {
    {"wait", Kind::Wait, 0, true},           {"move", Kind::Move, 1, false},        {"leave", Kind::Leave, 0, false},
    {"press", Kind::Press, 1, false},        {"release", Kind::Release, 1, false},  {"click", Kind::Click, 1, false},
    {"double", Kind::DoubleClick, 1, false}, {"right", Kind::RightClick, 1, false}, {"wheel", Kind::Wheel, 1, true},
    {"turn", Kind::Turn, 1, false},          {"pan", Kind::Pan, 1, false},          {"screen", Kind::Screen, 1, false},
};

struct Word {
    QString text;
    bool is_quoted = false;
};

QString quoted(const QString& text)
{
    QString inside;
    for (const QChar c : text) {
        if (c == u'"' || c == u'\\')
            inside += QLatin1Char('\\') + QString(c);
        else if (c == u'\n')
            inside += QLatin1String("\\n");
        else if (c == u'\t')
            inside += QLatin1String("\\t");
        else if (c < u' ')
            inside += QStringLiteral("\\x%1").arg(int(c.unicode()), 2, 16, QLatin1Char('0'));
        else
            inside += c;
    }
    return QLatin1Char('"') + inside + QLatin1Char('"');
}

QString number_text(double number)
{
    return QString::number(number, 'g', 12);
}

QString place_text(QPointF place)
{
    const auto rounded = [](double x) { return number_text(std::round(x * 100) / 100); };
    return rounded(place.x()) + QLatin1Char(' ') + rounded(place.y());
}

QString places_text(const InputStep& step)
{
    QString text;
    for (const QPointF& place : step.places)
        text += QLatin1Char(' ') + place_text(place);
    return text;
}

QString without_breaks(QString note)
{
    for (QChar& c : note)
        if (c < u' ')
            c = u' ';
    return note;
}

/// The words of one line; what is in quotes is one word.
class LineReader {
public:
    explicit LineReader(const QString& line) : m_line(line) {}

    /// False when a quote is not closed or something in it is wrong.
    bool read(std::vector<Word>& words)
    {
        for (skip_blanks(); m_at < m_line.size() && m_line[m_at] != u'#'; skip_blanks()) {
            Word word;
            if (m_line[m_at] == u'"' ? !read_quoted(word) : !read_plain(word))
                return false;
            words.push_back(std::move(word));
        }
        return true;
    }

private:
    void skip_blanks()
    {
        while (m_at < m_line.size() && (m_line[m_at] == u' ' || m_line[m_at] == u'\t' || m_line[m_at] == u'\r'))
            ++m_at;
    }
    bool read_plain(Word& word)
    {
        while (m_at < m_line.size() && !m_line[m_at].isSpace() && m_line[m_at] != u'"')
            word.text += m_line[m_at++];
        return !word.text.isEmpty();
    }
    bool read_quoted(Word& word)
    {
        word.is_quoted = true;
        for (++m_at; m_at < m_line.size() && m_line[m_at] != u'"'; ++m_at)
            if (m_line[m_at] != u'\\')
                word.text += m_line[m_at];
            else if (!read_escape(word.text))
                return false;
        return m_at++ < m_line.size();
    }
    bool read_escape(QString& text)
    {
        const QChar c = ++m_at < m_line.size() ? m_line[m_at] : QChar();
        bool is_number = true;
        if (c == u'x') {
            text += QChar(ushort(m_line.mid(m_at + 1, 2).toUInt(&is_number, 16)));
            m_at += 2;
        } else if (c == u'n' || c == u't') {
            text += c == u'n' ? u'\n' : u'\t';
        } else {
            text += c;
            is_number = c == u'"' || c == u'\\';
        }
        return is_number;
    }

    const QString& m_line;
    qsizetype m_at = 0;
};

/// Reads the lines one after the other; the first that is wrong ends it.
class ScriptReader {
public:
    Result<InputScript> read(const QString& text);

private:
    bool read_line(std::vector<Word> words);
    bool read_head(const std::vector<Word>& words);
    bool read_plain_verb(const PlainVerb& verb);
    bool read_drag();
    bool read_keys();
    bool read_expectation();
    bool read_event(Kind kind, bool has_line, bool has_object);
    bool read_value();

    // What stands next in the line
    bool has_next() const { return m_next < m_words.size(); }
    bool take_word(const char* word);
    bool take_quoted(QString& text);
    bool take_number(double& number, double least, double most);
    bool take_place();

    bool fail(const QString& why)
    {
        if (m_failure)
            m_failure = Status::error(m_line > 0 ? lang(u"第 %1 行：%2", u"line %1: %2").arg(m_line).arg(why) : why);
        return false;
    }

    InputScript m_script;
    std::vector<Word> m_words;
    std::size_t m_next = 0;
    InputStep m_step;
    int m_line = 0;
    bool m_has_head = false;
    double m_seconds = 0;
    Status m_failure;
};

bool ScriptReader::take_word(const char* word)
{
    const bool is_it = has_next() && !m_words[m_next].is_quoted && m_words[m_next].text == QLatin1String(word);
    m_next += is_it;
    return is_it;
}

bool ScriptReader::take_quoted(QString& text)
{
    if (!has_next() || !m_words[m_next].is_quoted)
        return fail(lang(u"缺少引号中的文字", u"a text in quotes is missing"));
    text = m_words[m_next++].text;
    return true;
}

bool ScriptReader::take_number(double& number, double least, double most)
{
    if (!has_next() || m_words[m_next].is_quoted)
        return fail(lang(u"缺少数字", u"a number is missing"));
    bool is_number = false;
    number = m_words[m_next].text.toDouble(&is_number);
    if (!is_number || !(number >= least && number <= most))
        return fail(lang(u"“%1”不是 %2 到 %3 之间的数", u"\"%1\" is no number from %2 to %3")
                        .arg(m_words[m_next].text)
                        .arg(least)
                        .arg(most));
    ++m_next;
    return true;
}

bool ScriptReader::take_place()
{
    double x = 0;
    double y = 0;
    if (!take_number(x, -farthest, farthest) || !take_number(y, -farthest, farthest))
        return false;
    m_step.places.append({x, y});
    return true;
}

bool ScriptReader::read_plain_verb(const PlainVerb& verb)
{
    m_step.kind = verb.kind;
    for (int i = 0; i < verb.places; ++i)
        if (!take_place())
            return false;
    if (verb.kind == Kind::Wait)
        return take_number(m_step.number, 0, longest_wait);
    if (verb.kind == Kind::Screen) {
        const QPointF size = m_step.places.front();
        return (size.x() >= 1 && size.y() >= 1 && size.x() <= largest_screen && size.y() <= largest_screen)
            || fail(
                   lang(u"屏幕的边长是 1 到 %1 像素", u"the sides of a screen are 1 to %1 pixels").arg(largest_screen));
    }
    return !verb.has_number || take_number(m_step.number, -1000, 1000);
}

bool ScriptReader::read_drag()
{
    m_step.kind = Kind::Drag;
    while (has_next() && !take_word("in")) {
        if (m_step.places.size() == most_places)
            return fail(lang(u"拖动的位置过多", u"the drag has too many places"));
        if (!take_place())
            return false;
    }
    if (m_step.places.size() < 2)
        return fail(lang(u"拖动至少需要两个位置", u"a drag needs two places at least"));
    return take_number(m_step.number, 0, longest_wait);
}

bool ScriptReader::read_keys()
{
    m_step.kind = Kind::Key;
    if (!take_quoted(m_step.text))
        return false;
    const QKeySequence keys = QKeySequence::fromString(m_step.text, QKeySequence::PortableText);
    return (keys.count() == 1 && keys[0].key() != Qt::Key_unknown)
        || fail(lang(u"没有按键“%1”", u"there is no key \"%1\"").arg(m_step.text));
}

bool ScriptReader::read_event(Kind kind, bool has_line, bool has_object)
{
    m_step.kind = kind;
    if (!take_quoted(m_step.text))
        return false;
    if (has_line && has_next() && !take_number(m_step.number, 0, 1e9))
        return false;
    return !has_object || !take_word("of") || take_quoted(m_step.object);
}

bool ScriptReader::read_value()
{
    m_step.kind = Kind::ExpectValue;
    if (!take_quoted(m_step.object))
        return false;
    if (!has_next() || m_words[m_next].is_quoted)
        return fail(lang(u"缺少属性的名称", u"the name of an attribute is missing"));
    m_step.attribute = m_words[m_next++].text;
    if (has_next() && m_words[m_next].is_quoted) {
        m_step.value = m_words[m_next++].text;
        return true;
    }
    if (take_word("true") || take_word("false")) {
        m_step.value = m_words[m_next - 1].text == QLatin1String("true");
        return true;
    }
    double number = 0;
    if (!take_number(number, -1e15, 1e15))
        return false;
    m_step.value = number;
    return true;
}

bool ScriptReader::read_expectation()
{
    if (take_word("call"))
        return read_event(Kind::ExpectCall, false, true);
    if (take_word("print"))
        return read_event(Kind::ExpectPrint, false, false);
    if (take_word("error"))
        return read_event(Kind::ExpectError, true, false);
    if (take_word("message"))
        return read_event(Kind::ExpectMessage, false, false);
    if (take_word("no")) {
        m_step.kind = Kind::ExpectNoMore;
        return take_word("more") || fail(lang(u"应为 expect no more", u"expect no more is what this may be"));
    }
    return read_value();
}

bool ScriptReader::read_head(const std::vector<Word>& words)
{
    m_has_head = words.size() == 2 && words[0].text == QLatin1String(first_word);
    if (!m_has_head)
        return fail(lang(u"不是输入脚本：第一行应为“%1 %2”", u"this is no recorded input, which begins with \"%1 %2\"")
                        .arg(QLatin1String(first_word))
                        .arg(version));
    return words[1].text == QString::number(version)
        || fail(lang(u"版本 %1 的输入脚本需要更新的程序", u"recorded input of version %1 needs a newer program")
                    .arg(words[1].text));
}

bool ScriptReader::read_line(std::vector<Word> words)
{
    if (words.empty())
        return true;
    if (!m_has_head)
        return read_head(words);
    m_words = std::move(words);
    m_next = 0;
    m_step = {};
    m_step.line = m_line;
    double seed = 0;
    bool is_step = true;
    bool ok = false;
    const auto plain = std::find_if(std::begin(plain_verbs), std::end(plain_verbs),
                                    [this](const PlainVerb& verb) { return take_word(verb.word); });
    if (plain != std::end(plain_verbs)) {
        ok = read_plain_verb(*plain);
    } else if (take_word("scene")) {
        is_step = false;
        ok = take_quoted(m_script.scene);
    } else if (take_word("texts")) {
        is_step = false;
        ok = take_quoted(m_script.texts);
    } else if (take_word("seed")) {
        is_step = false;
        ok = take_number(seed, 0, 4294967295.0);
        m_script.seed = quint32(seed);
    } else if (take_word("drag")) {
        ok = read_drag();
    } else if (take_word("key")) {
        ok = read_keys();
    } else if (take_word("type")) {
        m_step.kind = Kind::Type;
        ok = take_quoted(m_step.text);
    } else if (take_word("expect")) {
        ok = read_expectation();
    } else {
        return fail(lang(u"不认识“%1”", u"\"%1\" is not known").arg(m_words.front().text));
    }
    if (!ok)
        return false;
    if (has_next())
        return fail(lang(u"“%1”是多余的", u"\"%1\" is too much").arg(m_words[m_next].text));
    if (m_step.kind == Kind::Wait || m_step.kind == Kind::Drag)
        m_seconds += m_step.number;
    if (m_seconds > longest_script)
        return fail(lang(u"输入共长于 %1 秒", u"the input takes more than %1 seconds").arg(longest_script));
    if (m_step.kind == Kind::Screen && m_script.steps.empty() && m_script.screen.isEmpty())
        m_script.screen = screen_of(m_step);
    else if (is_step)
        m_script.steps.push_back(m_step);
    return true;
}

Result<InputScript> ScriptReader::read(const QString& text)
{
    const QList<QStringView> lines = QStringView(text).split(u'\n');
    if (lines.size() > most_lines)
        return Status::error(lang(u"多于 %1 行", u"there are more than %1 lines").arg(most_lines));
    for (const QStringView line : lines) {
        ++m_line;
        std::vector<Word> words;
        const QString own = line.toString();
        if (own.size() > longest_line)
            fail(lang(u"行太长", u"the line is too long"));
        else if (own.contains(QChar::Null) || !LineReader(own).read(words))
            fail(lang(u"引号或反斜杠有误", u"a quote or backslash is wrong"));
        else
            read_line(std::move(words));
        if (!m_failure)
            return m_failure;
    }
    m_line = 0;
    if (!m_has_head)
        (void)read_head({});
    else if (m_script.screen.isEmpty())
        fail(lang(u"没有屏幕的尺寸（screen 1280 720）", u"the size of the screen is missing (screen 1280 720)"));
    if (!m_failure)
        return m_failure;
    return std::move(m_script);
}

const char* word_of(Kind kind)
{
    for (const PlainVerb& verb : plain_verbs)
        if (verb.kind == kind)
            return verb.word;
    switch (kind) {
    case Kind::Drag: return "drag";
    case Kind::Key: return "key";
    case Kind::Type: return "type";
    case Kind::ExpectCall: return "expect call";
    case Kind::ExpectPrint: return "expect print";
    case Kind::ExpectError: return "expect error";
    case Kind::ExpectMessage: return "expect message";
    case Kind::ExpectNoMore: return "expect no more";
    default: return "expect";
    }
}

} // namespace

QSize screen_of(const InputStep& step)
{
    const QPoint size = step.places.front().toPoint();
    return {size.x(), size.y()};
}

Result<InputScript> parse_input_script(const QByteArray& bytes)
{
    if (bytes.size() > most_bytes)
        return Status::error(lang(u"文件太大", u"the file is too large"));
    QStringDecoder decode(QStringDecoder::Utf8);
    const QString text = decode(bytes);
    if (decode.hasError())
        return Status::error(lang(u"不是 UTF-8 文本", u"this is no text in UTF-8"));
    return ScriptReader().read(text);
}

QString input_value_text(const Value& value)
{
    if (const auto* text = std::get_if<QString>(&value))
        return quoted(*text);
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag ? QStringLiteral("true") : QStringLiteral("false");
    if (const auto* whole = std::get_if<qint64>(&value))
        return QString::number(*whole);
    if (const auto* number = std::get_if<double>(&value))
        return QString::number(*number, 'g', 6);
    return {};
}

QString input_step_text(const InputStep& step)
{
    QString text = QLatin1String(word_of(step.kind)) + places_text(step);
    switch (step.kind) {
    case Kind::Wait:
    case Kind::Wheel: return text + QLatin1Char(' ') + number_text(step.number);
    case Kind::Drag: return text + QLatin1String(" in ") + number_text(step.number);
    case Kind::Key:
    case Kind::Type:
    case Kind::ExpectPrint:
    case Kind::ExpectMessage: return text + QLatin1Char(' ') + quoted(step.text);
    case Kind::ExpectError:
        return text + QLatin1Char(' ') + quoted(step.text) + QLatin1Char(' ') + number_text(step.number);
    case Kind::ExpectCall:
        text += QLatin1Char(' ') + quoted(step.text);
        return step.object.isEmpty() ? text : text + QLatin1String(" of ") + quoted(step.object);
    case Kind::ExpectValue:
        return text + QLatin1Char(' ') + quoted(step.object) + QLatin1Char(' ') + step.attribute + QLatin1Char(' ')
            + input_value_text(step.value);
    default: return text;
    }
}

QString input_script_text(const InputScript& script, const QList<QString>& notes)
{
    QString text = QStringLiteral("%1 %2\n").arg(QLatin1String(first_word)).arg(version);
    if (!script.scene.isEmpty())
        text += QStringLiteral("scene %1\n").arg(quoted(script.scene));
    if (!script.texts.isEmpty())
        text += QStringLiteral("texts %1\n").arg(quoted(script.texts));
    text += QStringLiteral("screen %1 %2\nseed %3\n\n")
                .arg(script.screen.width())
                .arg(script.screen.height())
                .arg(script.seed);
    for (std::size_t i = 0; i < script.steps.size(); ++i) {
        text += input_step_text(script.steps[i]);
        const QString note = notes.value(qsizetype(i));
        text += note.isEmpty() ? QStringLiteral("\n") : QStringLiteral("  # %1\n").arg(without_breaks(note));
    }
    return text;
}

} // namespace tarn
