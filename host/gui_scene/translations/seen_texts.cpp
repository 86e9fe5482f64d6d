#include "seen_texts.h"

#include "core/authored.h"
#include "core/document.h"
#include "core/model_object.h"
#include "gui_core/control_state.h"
#include "gui_core/dialog_state.h"
#include "gui_core/menu_state.h"

#include <algorithm>

namespace tarn {

namespace {

bool has_letters(const QString& text)
{
    return std::any_of(text.begin(), text.end(),
                       [](QChar letter) { return letter.isLetter() || letter.isSurrogate(); });
}

/// An attribute that players read.
struct SeenField {
    FieldKey key;
    const char* name;
    bool is_list = false;
};

constexpr SeenField seen_fields[] = {
    {key<&StaticState::text>, "text"},
    {key<&MenuItemState::text>, "text"},
    {key<&EditBoxState::placeholder>, "placeholder"},
    {key<&ProgressState::message>, "message"},
    {key<&DialogState::caption>, "caption"},
    {key<&ItemsState::items>, "items", true},
    {key<&InfoBoxState::lines>, "lines", true},
};

bool is_seen_field(FieldKey field)
{
    return std::ranges::find(seen_fields, field, &SeenField::key) != std::end(seen_fields);
}

/// A dialog's title may be its name alone.
bool is_hidden_caption(const ModelObject& object, const FieldBase& field)
{
    const auto* dialog = dynamic_cast<const DialogState*>(&Authored::state(object));
    return dialog && field.key() == key<&DialogState::caption> && !dialog->caption_shown;
}

void add_texts(ModelObject& object, const FieldBase& field, std::vector<SeenText>& texts)
{
    const Value value = Authored::property(object, field);
    if (const auto* text = std::get_if<QString>(&value)) {
        if (has_letters(*text))
            texts.push_back({&object, &field, false, *text});
        return;
    }
    QStringList entries = std::get<QStringList>(value);
    entries.removeDuplicates();
    for (const QString& entry : entries)
        if (has_letters(entry))
            texts.push_back({&object, &field, true, entry});
}

} // namespace

std::vector<SeenText> seen_texts(const Document& document)
{
    std::vector<SeenText> texts;
    for (ModelObject* object : document.objects())
        for (const FieldBase* field : object->fields())
            if (is_seen_field(field->key()) && !is_hidden_caption(*object, *field))
                add_texts(*object, *field, texts);
    return texts;
}

bool is_list_of_texts(const QString& attribute)
{
    return std::ranges::any_of(
        seen_fields, [&](const SeenField& field) { return field.is_list && attribute == QLatin1String(field.name); });
}

QString known_name(const ModelObject& object)
{
    const FieldBase* field = object.fields().find("name");
    if (field)
        return std::get<QString>(Authored::property(object, *field));
    return object.parent() ? known_name(*object.parent()) : QString();
}

const FieldBase* seen_field(const ModelObject& object, const QString& name)
{
    const FieldBase* field = object.fields().find(name.toStdString());
    return field && is_seen_field(field->key()) ? field : nullptr;
}

void put_texts(ModelObject& object, const FieldBase& field, const QHash<QString, QString>& by_source)
{
    Value value = Authored::property(object, field);
    if (auto* entries = std::get_if<QStringList>(&value))
        for (QString& entry : *entries)
            entry = by_source.value(entry, entry);
    else if (!by_source.isEmpty())
        value = *by_source.begin();
    (void)object.set_property(field, value);
}

} // namespace tarn
