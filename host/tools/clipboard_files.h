#pragma once

#include "core/object_state.h"
#include "core/status.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <vector>

class CGuiPlugScene;

namespace tarn {

class JsonCursor;
class JsonWriter;

/// What travels with objects in the clipboard: pictures, movies and fonts, by their entries in a package.
using ClipboardFiles = QMap<QString, QByteArray>;

constexpr int clipboard_format = 1; ///< of the clipboard's text; newer ones are refused

/// Adds what a state of the scene names.
void add_files_of(const CGuiPlugScene& scene, const ObjectState& state, ClipboardFiles& files);
void write_files(JsonWriter& writer, const ClipboardFiles& files);
/// Reads one of them; whatever is wrong fails.
Status read_file(const QString& entry, JsonCursor& value, ClipboardFiles& files);
/// What the states name goes into the scene, under its name or a new one that they follow. Part of a user action.
void take_files(CGuiPlugScene& scene, std::vector<StatePtr>& states, const ClipboardFiles& files);

} // namespace tarn
