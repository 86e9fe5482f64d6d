#pragma once

#include "core/status.h"

#include <QByteArray>

#include <vector>

class CDXUTControl;
class CGuiPlugScene;

namespace tarn {

/// The clipboard's format for controls or dialogs: JSON, as in a package, with the pictures, movies and fonts that they show.
constexpr const char* clipboard_mime_type = "application/x-tarn-objects";

/// Controls as text for the clipboard, those of the lower layers first.
QByteArray clipboard_text(const CGuiPlugScene& scene, const std::vector<CDXUTControl*>& controls);

/// The selected dialogs, with their controls and scripts.
QByteArray clipboard_text_of_dialogs(const CGuiPlugScene& scene);

/// Puts the controls of a clipboard's text into the current dialog, or the root dialog when there is none, its
/// dialogs on top of the scene's, and its objects into the world, as one step; they become the selection. The text may come from anywhere: whatever is
/// wrong with it gives one message, and nothing changes.
Status paste_text(CGuiPlugScene& scene, const QByteArray& text);

// The same with the system's clipboard
void copy_to_clipboard(const QByteArray& text);
bool clipboard_has_objects();
Status paste_clipboard(CGuiPlugScene& scene);

} // namespace tarn
