#pragma once

#include "object_state.h"

#include <QString>

#include <functional>
#include <limits>
#include <memory>

namespace tarn {

class Document;
class ModelObject;

/// A text entry of a package and the object that everything in it hangs on. That object's fields are the entry's own
/// members.
struct PackagePart {
    const char* entry; ///< "scene.json"
    ModelObject* container;
    bool required = false; ///< a package without the entry is none; others are written only when there is something
    bool recorded = true;  ///< changes of the container and of the objects in it are steps of undo
    const char* folder = nullptr; ///< of the package's entries that belong to the part: "models/"; null for none
    bool travels = true;          ///< goes where an interface goes: into exports, copies and merges; the 3D world stays
};

/// What the program knows of a kind of objects: how they are saved, made and linked. Whatever goes through all objects
/// (reader, writer, merge, snapshots, problems, automation) goes through the table of kinds.
struct ObjectKind {
    const char* part;                 ///< entry of a package that holds them: "scene.json"
    const char* key;                  ///< member of that entry that lists them, which also names the kind: "controls"
    const char16_t* chinese;          ///< what a person calls one of them
    const char16_t* english;          ///< "control"
    bool saves_type = false;          ///< the member "type" of a saved object chooses its class
    ModelObject* container = nullptr; ///< on which they hang; null: their parent is an object and is saved with them
    ModelObject* fixed = nullptr;     ///< the only one of its kind, which is always there
    /// A fresh state; null for a type that there is not.
    ObjectState* (*make_state)(int type) = nullptr;
    std::function<std::shared_ptr<ModelObject>(StatePtr state)> make_object{};
    /// The list of ids in a parent's state; null when `parent` cannot have such children.
    IdList* (*children)(ObjectState& parent) = nullptr;
    /// What no two objects of the kind have alike; null where there is no such thing. An empty answer: the object lacks
    /// something without which it is nothing.
    QString (*unique_key)(const ObjectState& state) = nullptr;
    static constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();
    std::size_t most = unlimited; ///< that a scene may have

    // The document sets these.
    std::size_t place = 0; ///< in the table
    bool recorded = true;  ///< as the part says

    /// The same for reading; null too when no object is anybody's child in this way.
    const IdList* children_of(const ObjectState& parent) const
    {
        return children ? children(const_cast<ObjectState&>(parent)) : nullptr;
    }
};

} // namespace tarn
