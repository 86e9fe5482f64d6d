#pragma once

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QString>

#include <functional>
#include <vector>

class CGuiCore;

namespace tarn {

struct ObjectState;
struct SceneSnapshot;

/// The entries of `theirs` that the scene does not have yet. One whose name is taken by another content gets a new name;
/// `renamed` tells which.
QMap<QString, QByteArray> new_files(const QMap<QString, QByteArray>& theirs, const CGuiCore& core,
                                    QHash<QString, QString>& renamed);

/// Lets the pictures and movies that what was read shows follow their entries' new names.
void follow_renamed(SceneSnapshot& scene, const QHash<QString, QString>& renamed);
void follow_renamed(ObjectState& state, const QHash<QString, QString>& renamed);

/// Calls `visit` with the names of all pictures that `state` names, whether they exist or not.
void each_picture(const ObjectState& state, const std::function<void(const QString&)>& visit);
void each_picture(const SceneSnapshot& scene, const std::function<void(const QString&)>& visit);

/// The entries of the pictures that `state` names, and of its movie.
std::vector<QString> file_entries(const ObjectState& state);

} // namespace tarn
