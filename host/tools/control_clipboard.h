#pragma once

#include "core/status.h"

#include <QByteArray>

#include <vector>

class CDXUTControl;
class CGuiPlugScene;

namespace tarn {

/// The clipboard's format for controls: JSON, as in a package, with the pictures that they show.
constexpr const char* controls_mime_type = "application/x-tarn-controls";

/// Controls as text for the clipboard, those of the lower layers first.
QByteArray clipboard_text(const CGuiPlugScene& scene, const std::vector<CDXUTControl*>& controls);

/// Puts the controls of a clipboard's text into the current dialog, or the root dialog when there is none, as one step;
/// they become the selection. The text may come from anywhere: whatever is wrong with it gives one message, and nothing
/// changes.
Status paste_text(CGuiPlugScene& scene, const QByteArray& text);

// The same with the system's clipboard
void copy_to_clipboard(const CGuiPlugScene& scene, const std::vector<CDXUTControl*>& controls);
bool clipboard_has_controls();
Status paste_clipboard(CGuiPlugScene& scene);

} // namespace tarn
