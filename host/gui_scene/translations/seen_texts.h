#pragma once

#include "core/field.h"

#include <QHash>
#include <QString>

#include <vector>

namespace tarn {

class Document;
class ModelObject;

/// A text that players read: an attribute of an object, or one entry of a list.
struct SeenText {
    ModelObject* object;
    const FieldBase* field;
    bool in_list;
    QString text; ///< as the author wrote it

    bool operator==(const SeenText&) const = default;
};

/// Those of the whole scene, in the order of its objects. Empty ones and those without a letter ("1,280") are left out;
/// what a list has twice is there once.
std::vector<SeenText> seen_texts(const Document& document);

/// Whether the attribute of that name is a list, whose entries are texts of their own.
bool is_list_of_texts(const QString& attribute);
/// By which a person knows the object: its name, of an entry of a menu the menu's.
QString known_name(const ModelObject& object);
/// The attribute of that name that players read; null for another one.
const FieldBase* seen_field(const ModelObject& object, const QString& name);
/// Puts other texts in the place of what the author wrote, in what is shown or authored as the scope tells. Of a list each
/// entry has its own; of a single text there is one at most, whatever stood there.
void put_texts(ModelObject& object, const FieldBase& field, const QHash<QString, QString>& by_source);

} // namespace tarn
