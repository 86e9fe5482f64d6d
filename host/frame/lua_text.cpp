#include "lua_text.h"

#include <optional>

namespace tarn {

namespace {

bool begins_name(QChar c)
{
    return c == u'_' || (c.unicode() < 128 && c.isLetter());
}

bool continues_name(QChar c)
{
    return begins_name(c) || (c >= u'0' && c <= u'9');
}

/// The length of "[[", "[=[" and so on at `at`; 0 when there is no such bracket.
qsizetype long_bracket(QStringView text, qsizetype at)
{
    qsizetype end = at + 1;
    if (at >= text.size() || text[at] != u'[')
        return 0;
    while (end < text.size() && text[end] == u'=')
        ++end;
    return end < text.size() && text[end] == u'[' ? end + 1 - at : 0;
}

class Scanner {
public:
    explicit Scanner(QStringView text) : m_text(text) {}

    std::optional<LuaToken> next()
    {
        while (m_at < m_text.size() && m_text[m_at].isSpace())
            ++m_at;
        if (m_at == m_text.size())
            return std::nullopt;
        LuaToken token{LuaToken::Symbol, m_at, m_at};
        scan(token);
        token.end = m_at;
        return token;
    }

private:
    QChar at(qsizetype offset) const { return m_at + offset < m_text.size() ? m_text[m_at + offset] : QChar(); }

    void scan(LuaToken& token)
    {
        const QChar c = at(0);
        if (c == u'-' && at(1) == u'-') {
            token.kind = LuaToken::Comment;
            m_at += 2;
            const qsizetype bracket = long_bracket(m_text, m_at);
            token.open = bracket ? !skip_long(bracket) : skip_line();
        } else if (c == u'"' || c == u'\'') {
            token.kind = LuaToken::String;
            token.open = !skip_quoted(c);
        } else if (const qsizetype bracket = long_bracket(m_text, m_at)) {
            token.kind = LuaToken::String;
            token.open = !skip_long(bracket);
        } else if (begins_name(c)) {
            while (continues_name(at(0)))
                ++m_at;
            token.kind = lua_keywords().contains(m_text.mid(token.begin, m_at - token.begin)) ? LuaToken::Keyword
                                                                                              : LuaToken::Name;
        } else if (c.isDigit() || (c == u'.' && at(1).isDigit())) {
            token.kind = LuaToken::Number;
            while (continues_name(at(0)) || (at(0) == u'.' && at(1) != u'.'))
                ++m_at;
        } else {
            // Of the longer symbols only those matter that look like a member's access.
            ++m_at;
            while ((c == u'.' || c == u':') && at(0) == c)
                ++m_at;
        }
    }

    bool skip_line()
    {
        while (m_at < m_text.size() && m_text[m_at] != u'\n')
            ++m_at;
        return true;
    }

    bool skip_quoted(QChar quote)
    {
        for (++m_at; m_at < m_text.size() && m_text[m_at] != u'\n'; ++m_at) {
            if (m_text[m_at] == quote) {
                ++m_at;
                return true;
            }
            if (m_text[m_at] == u'\\' && m_at + 1 < m_text.size())
                ++m_at;
        }
        return false;
    }

    bool skip_long(qsizetype bracket)
    {
        const QString closing = m_text.mid(m_at, bracket).toString().replace(u'[', u']');
        const qsizetype found = m_text.indexOf(closing, m_at + bracket);
        m_at = found < 0 ? m_text.size() : found + bracket;
        return found >= 0;
    }

    QStringView m_text;
    qsizetype m_at = 0;
};

bool opens(QStringView word)
{
    static const QStringList words = QStringLiteral("function do then else repeat { ( [").split(u' ');
    return words.contains(word);
}

bool closes(QStringView word)
{
    static const QStringList words = QStringLiteral("end until else elseif } ) ]").split(u' ');
    return words.contains(word);
}

/// The openings that are open at the end of the tokens; `last` is what the last token closed.
struct Blocks {
    std::vector<LuaToken> open;
    std::optional<LuaToken> last;

    Blocks(QStringView text, const std::vector<LuaToken>& tokens)
    {
        for (const LuaToken& token : tokens) {
            last.reset();
            const QStringView word = token.in(text);
            const bool counts = token.kind == LuaToken::Keyword || token.kind == LuaToken::Symbol;
            if (counts && closes(word) && !open.empty()) {
                last = open.back();
                open.pop_back();
            }
            if (counts && opens(word))
                open.push_back(token);
        }
    }
};

qsizetype line_begin(QStringView text, qsizetype at)
{
    return at > 0 ? text.lastIndexOf(u'\n', at - 1) + 1 : 0;
}

} // namespace

const QStringList& lua_keywords()
{
    static const QStringList words
        = QStringLiteral("and break do else elseif end false for function goto if in local nil not or repeat return "
                         "then true until while")
              .split(u' ');
    return words;
}

std::vector<LuaToken> lua_tokens(QStringView text)
{
    std::vector<LuaToken> tokens;
    Scanner scanner(text);
    while (const auto token = scanner.next())
        tokens.push_back(*token);
    return tokens;
}

bool lua_opens_block(QStringView text)
{
    const Blocks blocks(text, lua_tokens(text));
    return !blocks.open.empty() && blocks.open.back().begin >= line_begin(text, text.size());
}

qsizetype lua_block_begin(QStringView text)
{
    const auto tokens = lua_tokens(text);
    if (tokens.empty() || tokens.back().end != text.size())
        return -1;
    const qsizetype line = line_begin(text, text.size());
    if (!text.mid(line, tokens.back().begin - line).trimmed().isEmpty())
        return -1;
    const Blocks blocks(text, tokens);
    return blocks.last ? blocks.last->begin : -1;
}

} // namespace tarn
