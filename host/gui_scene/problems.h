#pragma once

#include "engine/scene_plug.h"

#include <QHash>

class CGuiPlugScene;
class CConfigScene;

namespace tarn {

/// Looks for what is broken in a scene: events whose function or control is gone, pictures that are named but missing or
/// damaged, fonts that are neither in the package nor on the machine, functions with faults, names that several objects
/// have. All of these are kept as they are, also by a save: what is missing may come back. Values that were held to their
/// range when the scene was read are told until they are set.
class ProblemFinder {
public:
    using Problems = std::vector<SceneModel::Problem>;

    Problems find(CGuiPlugScene& scene);

private:
    struct Fault {
        int line; ///< from 1; 0 for none
        QString text;
    };
    void find_faulty_functions(const CConfigScene& functions, Problems& problems);

    QHash<quint64, QList<Fault>> m_faults; ///< by the functions' revisions: only changed texts are looked at again
};

} // namespace tarn
