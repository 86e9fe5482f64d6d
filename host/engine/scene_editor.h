#pragma once

#include "core/status.h"

#include <QFont>
#include <QKeySequence>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <Qt>

#include <functional>
#include <optional>
#include <vector>

namespace tarn {

/// A command that edits the scene, as the Edit menu, the views' context menu and their keys offer it.
struct EditCommand {
    int id = 0;
    const char* key = ""; ///< of the settings file
    QString name;         ///< as a menu shows it
    QKeySequence keys;
    int icon = 0; ///< number in the icon table; 0 for none
    bool enabled = false;
    bool checked = false;
    bool begins_group = false; ///< a separator stands before it
    QString question;          ///< has to be confirmed before the command runs; empty: nothing is asked
    QString question_title{};  ///< of the box that asks
};

/// A text of the scene that can be edited where it stands.
struct EditableText {
    QString text;
    QRectF place; ///< pixels of the view
    QFont font;
    Qt::Alignment alignment;
    bool multi_line = false;
    /// Stores the new text as one step of undo; harmless when the object is gone.
    std::function<void(const QString&)> commit;
};

/// Something that an author switches in the views and expects to find again at the next start.
struct ViewSetting {
    const char* key; ///< of the settings file
    QString name;    ///< as a menu shows it; null: other places show it
    quint32 value;
    std::vector<quint32> choices{}; ///< other values; none: 0 is off and 1 on
};

/// What can be done to a scene beyond the mouse tools.
class SceneEditor {
public:
    virtual ~SceneEditor() = default;

    /// The commands of the Edit menu, always the same ones in the same order.
    virtual std::vector<EditCommand> commands() const = 0;
    /// Selects what stands at `place` of a view unless it is selected, and answers the commands that go with it; none
    /// while the scene runs.
    virtual std::vector<EditCommand> context_commands(QPointF place) = 0;
    /// The same commands for what is selected, wherever a menu is opened; none while the scene runs.
    virtual std::vector<EditCommand> selection_commands() const = 0;
    /// Gives up what the mouse was about to create; false when it was to create nothing.
    virtual bool cancel_creation() = 0;
    /// Makes what the mouse was about to create, in its usual size; false when it was to create nothing.
    virtual bool create_armed() = 0;
    /// The area of the screen around what is selected and shown; empty for nothing.
    virtual QRectF selected_area() const = 0;
    /// Shows the picture in a file: in the object at `place` of the screen that shows pictures, or in a new one there.
    virtual Status drop_picture(const QString& file, QPointF place) = 0;
    virtual std::vector<ViewSetting> view_settings() const = 0;
    /// Nothing happens for another key or value.
    virtual void set_view_setting(const QString& key, quint32 value) = 0;
    /// Runs one of these commands; nothing happens when it is not enabled.
    virtual Status run(int command) = 0;
    /// The text at `place` of a view, whose object becomes the selected one.
    virtual std::optional<EditableText> text_at(QPointF place) = 0;
};

} // namespace tarn
