#pragma once

#include "gui_scene/package_writer.h"

namespace tarn {

/// What a save would write of the scene's parts, one after the other.
inline QByteArray all_texts(const CGuiCore& core, bool selection_only = false)
{
    QByteArray all;
    for (const auto& [entry, text] :
         package_texts(core.document(), content_to_save(core, {.selection_only = selection_only})))
        if (entry != QLatin1String("manifest.json"))
            all += text;
    return all;
}

} // namespace tarn
