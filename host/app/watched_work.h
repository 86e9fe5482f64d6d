#pragma once

#include "core/progress.h"

#include <functional>

class QString;
class QWidget;

/// Does `job`. Once it takes longer than a tenth of a second, a box shows how far it is and lets the user cancel it; the
/// windows are drawn meanwhile.
tarn::Status do_watched(QWidget* parent, const QString& what,
                        const std::function<tarn::Status(const tarn::Progress&)>& job);
