#pragma once

#include "core/model_object.h"

namespace tarn {

constexpr int max_language_name = 40;

/// What one text of the interface is in other languages.
struct TranslationState : StateOf<TranslationState> {
    ObjectRef object;  ///< whose text it is; kept when that is gone
    QString attribute; ///< the attribute: "text"; of a list "items", whose entries are told apart by `source`
    QString source;    ///< what the author had written when it was translated
    TextMap texts;     ///< by language: "de"

    static const FieldTable& field_table();
};

/// The translations of a scene as a whole.
struct TranslationsState : StateOf<TranslationsState> {
    QStringList languages; ///< in the order of the table's columns
    IdList texts;

    static const FieldTable& field_table();
};

class Translations;

class Translation final : public ModelObject {
public:
    Translation(Translations& all, StatePtr state);

    const TranslationState& translation() const { return state<TranslationState>(); }
    /// "" where there is none.
    QString text(const QString& language) const { return translation().texts.value(language); }

    const char* class_name() const override { return "CTranslation"; }
    void state_changed() override;

private:
    Translations& m_all;
};

} // namespace tarn
