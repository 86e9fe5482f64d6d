#include "translation.h"

#include "core/field.h"
#include "translations.h"

namespace tarn {

namespace {

constexpr int most_letters = 100'000; ///< of a text

} // namespace

Translation::Translation(Translations& all, StatePtr state) : ModelObject(all.document(), std::move(state)), m_all(all)
{
}

void Translation::state_changed()
{
    m_all.content_changed();
}

const FieldTable& TranslationState::field_table()
{
    using S = TranslationState;
    static const FieldTable table(nullptr, field<S, &S::id>("id", 0u, read_only()), field<S, &S::object>("object", {}),
                                  field<S, &S::attribute>("attribute", {}, max_length(100)),
                                  field<S, &S::source>("source", {}, max_length(most_letters)),
                                  field<S, &S::texts>("texts", {}, max_length(most_letters)));
    return table;
}

const FieldTable& TranslationsState::field_table()
{
    using S = TranslationsState;
    static const FieldTable table(nullptr, field<S, &S::languages>("languages", {}, max_length(max_language_name)),
                                  field<S, &S::texts>("text_ids", {}, children()));
    return table;
}

} // namespace tarn
