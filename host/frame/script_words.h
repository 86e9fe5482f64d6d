#pragma once

#include "script/script_api.h"

#include <QMap>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace tarn {

struct LuaToken;

/// What the editor of scripts offers while the author types. Places are UTF-16 units from the text's beginning.
class ScriptWords {
public:
    ScriptWords() = default;
    /// `library`: as ScriptRuntime::library() answers it.
    /// `names`: by verb, what can be named in its brackets.
    ScriptWords(std::vector<ScriptVerb> verbs, QStringList field_names, QStringList library,
                QMap<QString, QStringList> names = {});

    struct Offer {
        QStringList words;    ///< sorted, each once
        qsizetype typed;      ///< how much of the word stands before the cursor
        bool is_member;       ///< of what stands before a dot or colon
        bool is_name = false; ///< of an object or a function, between quotes
    };
    /// The words that fit what stands before `at`; none inside comments, and in strings only where a verb is told a name.
    Offer offer(QStringView text, qsizetype at) const;

    struct Tip {
        QString text;
        qsizetype begin = 0, end = 0; ///< of the parameter in `text` that is typed now; the same where there is none
        qsizetype place = 0;          ///< of the name that the tip is about
    };
    /// About the verb in whose brackets `at` is.
    std::optional<Tip> call_tip(QStringView text, qsizetype at) const;
    /// About the verb whose name `at` is in or beside.
    std::optional<Tip> name_tip(QStringView text, qsizetype at) const;

    /// The names of the verbs that are no methods.
    QStringList verb_names() const;
    /// Those with and those without a dot.
    QStringList library(bool members) const;

private:
    QStringList members(const QString& of) const;
    QStringList methods() const;
    Offer name_offer(QStringView text, const std::vector<LuaToken>& tokens, qsizetype at) const;
    std::optional<Tip> tip_about(QStringView text, const std::vector<LuaToken>& tokens, std::size_t name,
                                 int argument) const;

    std::vector<ScriptVerb> m_verbs;
    QStringList m_field_names;
    QStringList m_library;
    QMap<QString, QStringList> m_names;
};

} // namespace tarn
