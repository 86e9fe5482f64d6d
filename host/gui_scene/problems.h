#pragma once

#include "core/document.h"
#include "engine/scene_plug.h"
#include "movies/movie_tags.h"
#include "names_in_script.h"

#include <QHash>

class CGuiPlugScene;

namespace tarn {

/// Looks for what is broken in a scene: events whose function or control is gone, pictures that are named but missing or
/// damaged, fonts that are neither in the package nor on the machine, functions with faults or that ask for objects by
/// names that nothing has, names that several objects have. All of these are kept as they are, also by a save: what is
/// missing may come back. What movies need that their player lacks is told as well. Values that were held to their range when the scene was read are told until they are set.
class ProblemFinder {
public:
    using Problems = std::vector<SceneModel::Problem>;

    Problems find(CGuiPlugScene& scene);

private:
    struct Fault {
        int line; ///< from 1; 0 for none
        QString text;
    };
    /// What a function's text alone tells.
    struct Text {
        QList<Fault> faults;
        QList<NameInScript> names;
    };
    void find_faulty_functions(CGuiPlugScene& scene, Problems& problems);
    void find_unplayed(ModelObject& object, const QString& name, const DocumentState& document, Problems& problems);
    const MovieLacks& lacks_of(const QString& entry, const QByteArray& file);

    struct Movie {
        QByteArray file;
        MovieLacks lacks;
    };
    QHash<QString, Movie> m_movies; ///< by their entries: only changed files are looked into again
    QHash<quint64, Text> m_texts;   ///< by the functions' revisions: only changed texts are looked at again
};

} // namespace tarn
