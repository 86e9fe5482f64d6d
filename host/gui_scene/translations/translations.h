#pragma once

#include "seen_texts.h"
#include "translation.h"

#include <QHash>
#include <QSet>

#include <vector>

namespace tarn {

/// The texts of a scene in other languages, a part of the document of their own. What the author wrote is in no language in
/// particular; where a language lacks a text, that one is shown.
class Translations final : public ModelObject {
public:
    static constexpr int max_languages = 50;
    static constexpr std::size_t max_texts = 1'000'000;

    /// They become a part of the document.
    explicit Translations(Document& document);

    /// Those that were added, then those that came with texts from elsewhere, as far as there is room.
    const QStringList& languages() const;
    /// Fails for a name that is empty, too long or there already.
    Status add_language(const QString& name);
    /// Its texts go, too.
    void remove_language(const QString& name);

    /// Null for a text that was not translated.
    const Translation* find(const SeenText& text) const { return row_of(text); }
    QString text(const SeenText& text, const QString& language) const;
    /// Whether the author wrote something else since it was translated; an entry of a list never did.
    bool is_outdated(const SeenText& text) const;
    /// An empty one takes the translation away.
    void set_text(const SeenText& text, const QString& language, const QString& translated);

    /// Those of the objects' texts, as they are kept.
    std::vector<StatePtr> rows_of(const QSet<quint32>& objects) const;
    /// Takes rows on that may come from elsewhere. `copies`: whose texts they are here, by the ids that the rows know; rows
    /// of others are left out.
    void take_rows(const std::vector<StatePtr>& rows, const QHash<quint32, quint32>& copies);

    /// Has the interface show the language's texts, and what the author wrote where there is none. Writes are writes to what
    /// is shown.
    void show(const QString& language) const;

    /// What one of the texts is has changed.
    void content_changed() { m_stale = true; }

    ObjectState* fresh_state() const override { return new TranslationsState; }
    const char* class_name() const override { return "CTranslations"; }
    void state_changed() override { m_stale = true; }
    void children_changed() override { m_stale = true; }

private:
    struct Place {
        quint32 object;
        QString field;
        QString entry; ///< of a list
        bool operator==(const Place&) const = default;
        friend size_t qHash(const Place& place, size_t seed = 0)
        {
            return qHashMulti(seed, place.object, place.field, place.entry);
        }
    };
    static Place place_of(const SeenText& text);
    const TranslationsState& translations() const { return state<TranslationsState>(); }
    std::vector<Translation*> texts() const;
    /// Null when there is no room.
    Translation* add(const StatePtr& row);

    const ObjectKind* m_kind = nullptr;
    void look_through() const;
    Translation* row_of(const SeenText& text) const;
    mutable QHash<Place, Translation*> m_places;
    mutable QStringList m_languages;
    mutable bool m_stale = true;
};

} // namespace tarn
