#pragma once

#include "core/document.h"

#include <vector>

namespace tarn {

/// An attribute, or a part of it, that has another value.
struct FieldChange {
    QString field;
    QString part;   ///< an entry of a map, the time of a key; empty for the whole value
    QString before; ///< JSON; null for nothing
    QString after;
};

/// How many keys of a variable did what.
struct KeyChanges {
    int added = 0;
    int removed = 0;
    int changed = 0;
    int moved = 0;
    float offset = 0; ///< seconds by which all that moved did
};

struct ObjectChange {
    enum class What { Added, Removed, Changed };

    What what = What::Changed;
    const ObjectKind* kind = nullptr; ///< null: a part of the scene as a whole
    quint32 id = 0;
    QString name{};
    quint32 owner = 0; ///< the outermost object that it belongs to: a dialog, a timebar; its own id where it is one
    std::vector<FieldChange> fields{};
    KeyChanges keys{};
    bool has_other_parent = false;
    std::vector<const ObjectKind*> reordered{}; ///< kinds of its children that stand in another order
};

struct FileChange {
    QString name;
    ObjectChange::What what;
};

struct SceneChanges {
    std::vector<ObjectChange> objects; ///< by kinds, then by ids
    std::vector<FileChange> files;
    // Of all objects
    QHash<quint32, QString> names; ///< as they are called afterwards
    QHash<quint32, const ObjectKind*> kinds;

    bool is_empty() const { return objects.empty() && files.empty(); }
};

/// What has to be done to `before` to get `after`, told by the ids of the objects. Of `document` only the tables are used.
SceneChanges compare_scenes(const Document& document, const SceneSnapshot& before, const SceneSnapshot& after);

} // namespace tarn
