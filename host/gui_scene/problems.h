#pragma once

#include "engine/scene_plug.h"
#include "names_in_script.h"

#include <QHash>

class CGuiPlugScene;

namespace tarn {

/// Looks for what is broken in a scene: events whose function or control is gone, pictures that are named but missing or
/// damaged, fonts that are neither in the package nor on the machine, functions with faults or that ask for objects by
/// names that nothing has, names that several objects have. All of these are kept as they are, also by a save: what is
/// missing may come back. Values that were held to their range when the scene was read are told until they are set.
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

    QHash<quint64, Text> m_texts; ///< by the functions' revisions: only changed texts are looked at again
};

} // namespace tarn
