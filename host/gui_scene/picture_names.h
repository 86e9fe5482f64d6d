#pragma once

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QString>

#include <functional>
#include <vector>

class CGuiCore;

namespace tarn {

class ModelObject;

/// The entries of `theirs` that the scene does not have yet. One whose name is taken by another content gets a new name;
/// `renamed` tells which.
QMap<QString, QByteArray> new_files(const QMap<QString, QByteArray>& theirs, const CGuiCore& core,
                                    QHash<QString, QString>& renamed);

/// Lets the pictures that `objects`, which are not part of the scene yet, show follow their entries' new names.
void follow_renamed(const std::vector<ModelObject*>& objects, const QHash<QString, QString>& renamed);

/// Calls `visit` with the names of all pictures that `object` shows, whether they exist or not.
void each_picture(const ModelObject& object, const std::function<void(const QString&)>& visit);

/// Their entries.
std::vector<QString> picture_entries(const ModelObject& object);

} // namespace tarn
