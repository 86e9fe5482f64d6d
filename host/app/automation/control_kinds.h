#pragma once

#include "core/status.h"

#include <QStringList>

class QWidget;

namespace tarn::script {

/// What automation can do with a class of widgets. Null: widgets of the class have no such thing.
struct ControlKind {
    const QMetaObject* type;
    const char* name; ///< in messages: "a combo box"
    bool clicked_as_a_whole = true;
    QString (*text)(const QWidget&) = nullptr;
    /// The widget that takes the keys; null for one that cannot be typed into.
    QWidget* (*editor)(QWidget&) = nullptr;
    QStringList (*items)(const QWidget&) = nullptr;
    int (*index)(const QWidget&) = nullptr;
    /// Chooses an entry that there is, with mouse or keyboard; false when it cannot be chosen.
    bool (*choose)(QWidget&, int) = nullptr;
};

const ControlKind& kind_of(const QWidget& widget);
/// Clicks the part of a widget that takes clicks.
void click_widget(QWidget& widget);

} // namespace tarn::script
