#pragma once

#include "core/status.h"

#include <QByteArray>

class CDXUTControl;
class CGuiPlugScene;

namespace tarn {

/// The clipboard's format for a control's look, see look_fields: JSON, with the pictures and fonts that it names.
constexpr const char* look_mime_type = "application/x-tarn-look";

QByteArray look_text(const CGuiPlugScene& scene, const CDXUTControl& control);

/// Gives the selected controls the look, as one step. Those of another type take what they have as well: the elements of
/// the same name, and the font where they show a text. The text may come from anywhere: whatever is wrong with it gives one
/// message, and nothing changes.
Status paste_look_text(CGuiPlugScene& scene, const QByteArray& text);

// The same with the system's clipboard
bool clipboard_has_look();
void copy_look(const CGuiPlugScene& scene);
Status paste_look(CGuiPlugScene& scene);

} // namespace tarn
