#pragma once

#include <QHash>
#include <QString>

namespace tarn {

class Document;
class ModelObject;

/// Names for the dialogs, controls and menus of a scene as it is shown now, as a person reads them: "Inventory",
/// "Inventory/Use", "File/Save", and "#17", by its id, for what shares its name with others.
class ObjectPaths {
public:
    explicit ObjectPaths(const Document& document);

    QString path_of(const ModelObject& object) const;
    /// Null when there is none.
    ModelObject* find(const QString& path) const;

private:
    const Document& m_document;
    QHash<QString, ModelObject*> m_objects; ///< null where several have the path
};

/// The name attribute of an object, or the text of one that has none; else empty.
QString object_name(const ModelObject& object);

} // namespace tarn
