#pragma once

#include "core/status.h"

#include <QSet>
#include <QString>

namespace tarn {

class Document;
class ModelObject;
struct ObjectState;

/// The package entry of the local movie that `state` names; empty for none.
QString movie_entry_of(const ObjectState& state);
/// Lets it name that of another entry.
void set_movie_entry(ObjectState& state, const QString& entry);

/// Takes the Flash movie in the file `path` into the scene and answers its name there: that of the file, or another one
/// where that is taken. A movie that the scene has already is shared.
Result<QString> take_movie(Document& document, const QString& path);

/// The length of a change of some objects inside a user action. Movies in the scene that they showed before it and that
/// no control shows after it leave the scene with the same step.
class MovieRelease {
public:
    template <class Objects>
    MovieRelease(Document& document, const Objects& objects) : m_document(document)
    {
        for (const auto* object : objects)
            note(*object);
    }
    ~MovieRelease();
    MovieRelease(const MovieRelease&) = delete;
    MovieRelease& operator=(const MovieRelease&) = delete;

private:
    void note(const ModelObject& object);

    Document& m_document;
    QSet<QString> m_shown; ///< entries of the package
};

} // namespace tarn
