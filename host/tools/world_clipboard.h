#pragma once

#include "clipboard_files.h"

namespace tarn {

struct ObjectKind;

// Objects of the world in the clipboard's text, which control_clipboard.h reads and writes as a whole.

/// The selected ones, with the files of their models and pictures.
QByteArray clipboard_text_of_world(const CGuiPlugScene& scene);
/// Reads one of them, which are of that kind; whatever is wrong fails.
Status read_world_object(const ObjectKind& kind, JsonCursor& value, std::vector<StatePtr>& objects);
/// Whether the package's entry belongs to a model.
bool is_model_entry(const QString& entry);
/// Puts copies into the world, a little beside those that stand there, as one step; they become the selection. A model that
/// the scene has is not taken twice, and another one of its name gets a name of its own.
void paste_world_objects(CGuiPlugScene& scene, std::vector<StatePtr>& objects, const ClipboardFiles& files);

} // namespace tarn
