#pragma once

#include "core/document.h"

#include <QHash>

namespace tarn {

/// The new ids by the old ones.
using IssuedIds = QHash<quint32, quint32>;

/// Gives objects other ids; references follow, and so do functions that were made for an object and are named after its
/// id, with who calls them.
void reissue_ids(const Document& document, SceneSnapshot& scene, const IssuedIds& issued);

/// The ids that have to become others in `theirs`, where what is new in `ours` may have them already. `next` is the first
/// id that is free in both, and afterwards in the result.
IssuedIds ids_to_reissue(const SceneSnapshot& base, const SceneSnapshot& ours, const SceneSnapshot& theirs,
                         quint32& next);

/// Of kinds whose objects are known by what they are (a function's name), those that were made in `scene` anew get the
/// ids that the same things have in `known`, where these are not in `scene`.
void adopt_ids(const Document& document, const SceneSnapshot& base, const SceneSnapshot& known, SceneSnapshot& scene);

} // namespace tarn
