#include "script_words.h"

#include "lua_text.h"

#include <algorithm>

namespace tarn {

namespace {

using Tokens = std::vector<LuaToken>;

constexpr std::size_t most_signatures = 4;

Tokens tokens_before(QStringView text, qsizetype at)
{
    return lua_tokens(text.left(at));
}

bool is_symbol(QStringView text, const LuaToken& token, QChar symbol)
{
    return token.kind == LuaToken::Symbol && token.in(text) == symbol;
}

/// The dot or colon before the token `index`, or the end of the tokens; a null character where there is another thing.
QChar access_before(QStringView text, const Tokens& tokens, std::size_t index)
{
    if (index == 0)
        return {};
    for (const QChar access : {QChar(u'.'), QChar(u':')})
        if (is_symbol(text, tokens[index - 1], access))
            return access;
    return {};
}

/// Names that the text itself has after that access, apart from the one at `but`.
QStringList names_in(QStringView text, QChar access, qsizetype but)
{
    QStringList names;
    const Tokens tokens = lua_tokens(text);
    for (std::size_t i = 0; i < tokens.size(); ++i)
        if (tokens[i].kind == LuaToken::Name && tokens[i].begin != but && access_before(text, tokens, i) == access)
            names.append(tokens[i].in(text).toString());
    return names;
}

void keep_fitting(QStringList& words, QStringView prefix)
{
    words.removeIf([&](const QString& word) { return !word.startsWith(prefix, Qt::CaseInsensitive); });
    std::sort(words.begin(), words.end(), [](const QString& a, const QString& b) {
        const int order = a.compare(b, Qt::CaseInsensitive);
        return order ? order < 0 : a < b;
    });
    words.removeDuplicates();
}

struct Argument {
    std::size_t name; ///< the token of the function
    int index;
};

/// The call that is not closed at the end of the tokens.
std::optional<Argument> open_call(QStringView text, const Tokens& tokens)
{
    struct Bracket {
        std::size_t token;
        int commas;
    };
    std::vector<Bracket> open;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind != LuaToken::Symbol)
            continue;
        const QChar c = text[tokens[i].begin];
        if (c == u'(' || c == u'{' || c == u'[')
            open.push_back({i, 0});
        else if ((c == u')' || c == u'}' || c == u']') && !open.empty())
            open.pop_back();
        else if (c == u',' && !open.empty())
            ++open.back().commas;
    }
    for (; !open.empty(); open.pop_back()) {
        const auto [token, commas] = open.back();
        if (token > 0 && tokens[token - 1].kind == LuaToken::Name && is_symbol(text, tokens[token], u'('))
            return Argument{token - 1, commas};
    }
    return std::nullopt;
}

/// The verb's signature, in which the parameter `argument` is the tip's stressed part.
void append_signature(const ScriptVerb& verb, int argument, ScriptWords::Tip& tip)
{
    if (verb.of)
        tip.text += QLatin1String(verb.of) + QLatin1Char(':');
    tip.text += QLatin1String(verb.name) + QLatin1Char('(');
    const int count = int(verb.parameters.size());
    for (int i = 0; i < count + verb.more; ++i) {
        if (i > 0)
            tip.text += QStringLiteral(", ");
        const auto begin = tip.text.size();
        const QString name = i < count ? QLatin1String(verb.parameters[std::size_t(i)].name) : QStringLiteral("...");
        tip.text += i < count && verb.parameters[std::size_t(i)].optional ? QStringLiteral("[%1]").arg(name) : name;
        if (i == argument || (i == count && argument > count)) {
            tip.begin = begin;
            tip.end = tip.text.size();
        }
    }
    tip.text += QLatin1Char(')');
}

void append_explanation(const ScriptVerb& verb, ScriptWords::Tip& tip)
{
    if (const QString about = verb.about.text(); !about.isEmpty())
        tip.text += QLatin1Char('\n') + about;
    for (const ScriptParameter& parameter : verb.parameters)
        if (const QString about = parameter.about.text(); !about.isEmpty())
            tip.text += QStringLiteral("\n  %1 - %2").arg(QLatin1String(parameter.name), about);
}

} // namespace

ScriptWords::ScriptWords(std::vector<ScriptVerb> verbs, QStringList field_names, QStringList library,
                         QMap<QString, QStringList> names)
    : m_verbs(std::move(verbs)),
      m_field_names(std::move(field_names)),
      m_library(std::move(library)),
      m_names(std::move(names))
{
}

QStringList ScriptWords::library(bool members) const
{
    QStringList names = m_library;
    names.removeIf([&](const QString& name) { return name.contains(u'.') != members; });
    return names;
}

QStringList ScriptWords::verb_names() const
{
    QStringList names;
    for (const ScriptVerb& verb : m_verbs)
        if (!verb.of)
            names.append(QLatin1String(verb.name));
    return names;
}

QStringList ScriptWords::methods() const
{
    QStringList names;
    for (const ScriptVerb& verb : m_verbs)
        if (verb.of)
            names.append(QLatin1String(verb.name));
    return names;
}

QStringList ScriptWords::members(const QString& of) const
{
    QStringList names;
    for (const QString& name : m_library)
        if (name.startsWith(of + QLatin1Char('.')))
            names.append(name.mid(of.size() + 1));
    return names;
}

/// Inside a string that is the first thing in the brackets of a verb.
ScriptWords::Offer ScriptWords::name_offer(QStringView text, const Tokens& tokens, qsizetype at) const
{
    const std::size_t string = tokens.size() - 1;
    const qsizetype begin = tokens[string].begin + 1;
    Offer offer{{}, at - begin, false, true};
    const bool in_brackets = string > 1 && is_symbol(text, tokens[string - 1], u'(')
        && access_before(text, tokens, string - 2).isNull();
    if (!in_brackets || text[begin - 1] == u'[')
        return offer;
    offer.words = m_names.value(tokens[string - 2].in(text).toString());
    keep_fitting(offer.words, text.mid(begin, offer.typed));
    return offer;
}

ScriptWords::Offer ScriptWords::offer(QStringView text, qsizetype at) const
{
    const Tokens tokens = tokens_before(text, at);
    std::size_t index = tokens.size();
    Offer offer{{}, 0, false};
    if (!tokens.empty() && tokens.back().end == at) {
        const LuaToken& last = tokens.back();
        if (last.kind == LuaToken::Name || last.kind == LuaToken::Keyword) {
            offer.typed = at - last.begin;
            --index;
        } else if (last.kind == LuaToken::String && last.open) {
            return name_offer(text, tokens, at);
        } else if (last.open || last.kind == LuaToken::Number || last.kind == LuaToken::String) {
            return offer;
        }
    }
    const qsizetype begin = at - offer.typed;
    const QChar access = access_before(text, tokens, index);
    offer.is_member = !access.isNull();
    if (access == u'.') {
        const QString of = index > 1 ? tokens[index - 2].in(text).toString() : QString();
        offer.words = members(of);
        if (offer.words.isEmpty())
            offer.words = m_field_names + names_in(text, access, begin);
    } else if (access == u':') {
        offer.words = methods() + names_in(text, access, begin);
    } else {
        offer.words = lua_keywords() + library(false) + verb_names() + names_in(text, access, begin);
    }
    keep_fitting(offer.words, text.mid(begin, offer.typed));
    return offer;
}

std::optional<ScriptWords::Tip> ScriptWords::tip_about(QStringView text, const Tokens& tokens, std::size_t name,
                                                       int argument) const
{
    const QString wanted = tokens[name].in(text).toString();
    const QChar access = access_before(text, tokens, name);
    std::vector<const ScriptVerb*> found;
    for (const ScriptVerb& verb : m_verbs)
        if (wanted == QLatin1String(verb.name) && access == (verb.of ? QChar(u':') : QChar()))
            found.push_back(&verb);
    if (found.empty())
        return std::nullopt;
    Tip tip;
    tip.place = tokens[name].begin;
    append_signature(*found.front(), argument, tip);
    append_explanation(*found.front(), tip);
    for (std::size_t i = 1; i < std::min(found.size(), most_signatures); ++i) {
        tip.text += QLatin1Char('\n');
        append_signature(*found[i], -1, tip);
    }
    return tip;
}

std::optional<ScriptWords::Tip> ScriptWords::call_tip(QStringView text, qsizetype at) const
{
    const Tokens tokens = tokens_before(text, at);
    if (!tokens.empty() && tokens.back().kind == LuaToken::Comment && tokens.back().open)
        return std::nullopt;
    const auto call = open_call(text, tokens);
    return call ? tip_about(text, tokens, call->name, call->index) : std::nullopt;
}

std::optional<ScriptWords::Tip> ScriptWords::name_tip(QStringView text, qsizetype at) const
{
    const Tokens tokens = lua_tokens(text);
    for (std::size_t i = 0; i < tokens.size(); ++i)
        if (tokens[i].kind == LuaToken::Name && tokens[i].begin <= at && at <= tokens[i].end)
            return tip_about(text, tokens, i, -1);
    return std::nullopt;
}

} // namespace tarn
