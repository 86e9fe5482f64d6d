#pragma once

#include "core/status.h"

#include <QByteArray>
#include <QMap>
#include <QString>

class CGuiPlugScene;

namespace tarn {

/// Dialogs with their controls and scripts, told as a scene that holds nothing else.
struct ToldDialogs {
    // By entries of a package. What is in them may come from anywhere.
    QMap<QString, QByteArray> texts{};
    QMap<QString, QByteArray> files{};
};

/// Those that are selected, without pictures and movies.
ToldDialogs told_selected_dialogs(const CGuiPlugScene& scene);

/// Puts the dialogs on top of the scene's as one step; they become the selection. Their functions, ids and, where they
/// are taken, names are their own. They stand where they stood, or aside where dialogs of the same frame are. Whatever is
/// wrong with the text gives one message, and nothing changes.
Status add_dialogs(CGuiPlugScene& scene, const ToldDialogs& dialogs, const QString& step_name);

/// Copies of the selected dialogs, a little aside.
Status duplicate_dialogs(CGuiPlugScene& scene);

} // namespace tarn
