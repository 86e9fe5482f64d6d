#include "translations.h"

#include "core/authored.h"
#include "core/journal.h"
#include "core/language.h"

#include <algorithm>
#include <map>

namespace tarn {

namespace {

constexpr const char* entry = "languages.json";

IdList* texts_in(ObjectState& parent)
{
    auto* translations = dynamic_cast<TranslationsState*>(&parent);
    return translations ? &translations->texts : nullptr;
}

/// No text has two rows: a merge of what two translators did puts them together.
QString key_of(const ObjectState& state)
{
    const auto& s = static_cast<const TranslationState&>(state);
    if (s.object.id == 0 || s.attribute.isEmpty())
        return {};
    const QString place = QStringLiteral("%1/%2").arg(s.object.id).arg(s.attribute);
    return is_list_of_texts(s.attribute) ? place + QLatin1Char('/') + s.source : place;
}

} // namespace

Translations::Translations(Document& document) : ModelObject(document, new TranslationsState)
{
    document.add_part({.entry = entry, .container = this});
    document.add_kind(
        {.part = entry,
         .key = "texts",
         .chinese = u"译文",
         .english = u"translation",
         .container = this,
         .make_state = [](int) -> ObjectState* { return new TranslationState; },
         .make_object = [this](StatePtr state) { return std::make_shared<Translation>(*this, std::move(state)); },
         .children = texts_in,
         .unique_key = key_of,
         .most = max_texts});
    m_kind = &document.kinds().back();
}

Status Translations::add_language(const QString& name)
{
    const QString wanted = name.trimmed();
    if (wanted.isEmpty() || wanted.size() > max_language_name)
        return Status::error(
            lang(u"语言名称需要 1 到 %1 个字。", u"A language's name has 1 to %1 letters.").arg(max_language_name));
    const auto is_fit = [](QChar c) { return c.isLetterOrNumber() || QLatin1String(" -_()").contains(c); };
    if (!std::all_of(wanted.begin(), wanted.end(), is_fit))
        return Status::error(lang(u"语言名称由字母、数字、空格、-、_ 和括号组成。",
                                  u"A language's name is made of letters, digits, spaces, -, _ and parentheses."));
    if (languages().contains(wanted, Qt::CaseInsensitive))
        return Status::error(lang(u"语言 %1 已存在。", u"There is a language %1 already.").arg(wanted));
    if (languages().size() >= max_languages)
        return Status::error(
            lang(u"一个场景最多 %1 种语言。", u"A scene has at most %1 languages.").arg(max_languages));
    const UserAction action(journal(), lang(u"添加语言", u"Add Language"));
    write<TranslationsState>([&](TranslationsState& s) { s.languages.append(wanted); });
    return {};
}

void Translations::remove_language(const QString& name)
{
    const UserAction action(journal(), lang(u"删除语言", u"Remove Language"));
    std::vector<ModelObject*> empty;
    for (Translation* one : texts()) {
        if (one->text(name).isEmpty())
            continue;
        one->write<TranslationState>([&](TranslationState& s) { s.texts.remove(name); });
        if (one->translation().texts.isEmpty())
            empty.push_back(one);
    }
    document().detach(empty);
    write<TranslationsState>([&](TranslationsState& s) { s.languages.removeAll(name); });
}

Translations::Place Translations::place_of(const SeenText& text)
{
    return {text.object->id(), QString::fromLatin1(text.field->name()), text.in_list ? text.text : QString()};
}

std::vector<Translation*> Translations::texts() const
{
    std::vector<Translation*> texts;
    for (const ObjectRef text : translations().texts)
        texts.push_back(document().find_as<Translation>(text.id));
    return texts;
}

Translation* Translations::row_of(const SeenText& text) const
{
    look_through();
    return m_places.value(place_of(text));
}

const QStringList& Translations::languages() const
{
    look_through();
    return m_languages;
}

void Translations::look_through() const
{
    if (!std::exchange(m_stale, false))
        return;
    m_places.clear();
    m_languages = translations().languages;
    for (Translation* one : texts()) {
        const TranslationState& s = one->translation();
        m_places.insert({s.object.id, s.attribute, is_list_of_texts(s.attribute) ? s.source : QString()}, one);
        for (auto text = s.texts.begin(); text != s.texts.end(); ++text)
            if (m_languages.size() < max_languages && !m_languages.contains(text.key()))
                m_languages.append(text.key());
    }
}

QString Translations::text(const SeenText& text, const QString& language) const
{
    const Translation* found = find(text);
    return found ? found->text(language) : QString();
}

bool Translations::is_outdated(const SeenText& text) const
{
    const Translation* found = find(text);
    return found && found->translation().source != text.text;
}

Translation* Translations::add(const StatePtr& row)
{
    if (std::size_t(translations().texts.size()) >= max_texts || (row->id = document().take_id()) == 0)
        return nullptr;
    const auto made = document().create(*m_kind, row);
    document().attach(*made, *this, translations().texts.size());
    return static_cast<Translation*>(made.get());
}

std::vector<StatePtr> Translations::rows_of(const QSet<quint32>& objects) const
{
    std::vector<StatePtr> rows;
    for (const Translation* one : texts())
        if (objects.contains(one->translation().object.id))
            rows.emplace_back(one->translation().clone());
    return rows;
}

void Translations::take_rows(const std::vector<StatePtr>& rows, const QHash<quint32, quint32>& copies)
{
    QSet<QString> taken; // No text has two rows.
    for (const StatePtr& row : rows) {
        const auto& from = static_cast<const TranslationState&>(*row);
        const auto copy = copies.constFind(from.object.id);
        const QString key = key_of(from);
        if (copy == copies.constEnd() || key.isEmpty() || taken.contains(key))
            continue;
        taken.insert(key);
        const StatePtr held(from.clone());
        static_cast<TranslationState&>(*held).object = {*copy};
        if (!add(held))
            return;
    }
}

void Translations::set_text(const SeenText& text, const QString& language, const QString& translated)
{
    Translation* found = row_of(text);
    if (!languages().contains(language) || (!found && translated.isEmpty()))
        return;
    const UserAction action(journal(), lang(u"翻译文字", u"Translate"));
    if (!found) {
        const StatePtr row(new TranslationState);
        auto& state = static_cast<TranslationState&>(*row);
        state.object = {text.object->id()};
        state.attribute = QString::fromLatin1(text.field->name());
        if (!(found = add(row)))
            return;
    }
    m_places.insert(place_of(text), found);
    found->write<TranslationState>([&](TranslationState& s) {
        s.source = text.text;
        s.texts.insert(language, translated);
        if (translated.isEmpty())
            s.texts.remove(language);
    });
    if (found->translation().texts.isEmpty()) {
        ModelObject* empty = found;
        document().detach({&empty, 1});
        m_places.remove(place_of(text));
    }
    m_stale = false; // What changed is known: many texts come one after the other.
}

void Translations::show(const QString& language) const
{
    std::map<std::pair<quint32, QString>, QHash<QString, QString>> by_field;
    for (const Translation* one : texts()) {
        const TranslationState& s = one->translation();
        auto& texts = by_field[{s.object.id, s.attribute}]; // Without a text it gets back what the author wrote.
        if (const QString text = one->text(language); !text.isEmpty())
            texts.insert(s.source, text);
    }
    for (const auto& [place, texts] : by_field) {
        ModelObject* object = document().find(place.first);
        const FieldBase* field = object && object->is_attached() ? seen_field(*object, place.second) : nullptr;
        if (field)
            put_texts(*object, *field, texts);
    }
}

} // namespace tarn
