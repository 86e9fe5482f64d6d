#pragma once

#include "core/document.h"
#include "core/progress.h"
#include "core/status.h"

#include <QByteArray>
#include <QHash>
#include <QSet>

#include <functional>

namespace tarn {

class JsonCursor;

/// The text of one part of a scene: the fields of its container, then the objects of each kind, one a line, in the order
/// of the table of kinds, then the members that nobody knew. Only tables of `document` are read, so a snapshot can be written in
/// another thread. The text is null when the progress stops it.
QByteArray part_text(const Document& document, const PackagePart& part, const SceneSnapshot& scene,
                     const Progress& progress = {});

/// The share that one part of a scene has in work on all of them.
Progress progress_of(const Document& document, const PackagePart& part, const Progress& whole);

/// Whether the part has nothing to be saved.
bool is_empty(const Document& document, const PackagePart& part, const SceneSnapshot& scene);

/// Reads the texts of the parts of a scene into states that are linked to each other, but not part of the document. What
/// is read counts as hostile.
class SceneReader {
public:
    explicit SceneReader(const Document& document);

    Status read(const PackagePart& part, QByteArray text, const Progress& progress = {});
    /// Links what was read. `next_id` is what the package tells, 0 for nothing.
    Status finish(quint32 next_id);
    SceneSnapshot& scene() { return m_scene; }

private:
    Status read_object(std::size_t kind, JsonCursor& value);
    Status claim_id(std::size_t kind, const ObjectState& state, const JsonCursor& place);
    Status claim_key(std::size_t kind, const ObjectState& state, const JsonCursor& place);
    Status reserve_references(const ObjectKind& kind);
    void keep_held(quint32 object, JsonCursor& value);
    Status link(std::size_t kind, const StatePtr& state);

    const Document& m_document;
    SceneSnapshot m_scene;
    QHash<quint32, std::pair<std::size_t, std::size_t>> m_by_id; ///< kind and place of the objects
    std::vector<QSet<QString>> m_keys;                           ///< unique ones, by kind
    quint32 m_highest;
};

} // namespace tarn
