#pragma once

#include "core/status.h"
#include "plug_info.h"
#include "script/script_api.h"

#include <QRectF>
#include <QString>

#include <vector>

class CBaseWorld;

namespace tarn {

class Document;
class Journal;
class ModelObject;
class SceneEditor;

/// The model of a scene plug-in as the program's automation sees it: objects with properties, and what is selected.
class SceneModel {
public:
    struct Selection {
        bool editing = false;
        bool controls_selected = false;
        bool menu_editing = false;
        ModelObject* dialog = nullptr; ///< the current one; null for none
        ModelObject* control = nullptr;
        ModelObject* menu = nullptr;
        std::vector<ModelObject*> dialogs; ///< in selection order
        std::vector<ModelObject*> controls;
    };

    /// What ties an event of a control to a function.
    struct Event {
        ModelObject* control = nullptr; ///< null when it is gone
        quint32 type = 0;
        QString function;
    };
    /// Something in the scene that names what is not there, or a function that cannot be run.
    struct Problem {
        ModelObject* object = nullptr; ///< where it is to be mended; null: in the function, or nowhere
        QString place;                 ///< what the object or the function is called
        QString text;
        QString function{}; ///< whose text is to be mended; empty for none
        int line = 0;       ///< of that; 0 for none
    };

    virtual ~SceneModel() = default;
    /// The same objects as scene functions find them.
    virtual const ScriptObjects& objects() const = 0;
    virtual std::vector<ModelObject*> dialogs() const = 0; ///< the top layer last
    virtual ModelObject* root_dialog() const = 0;
    virtual std::vector<ModelObject*> controls() const = 0; ///< in the scene's order
    /// The controls of a dialog, the top layer last; empty for another kind of object.
    virtual std::vector<ModelObject*> controls_of(const ModelObject& dialog) const = 0;
    virtual std::vector<ModelObject*> menus() const = 0; ///< in the order in which they were made
    /// The items of a menu, those of submenus behind the item that opens them; empty for another kind of object.
    virtual std::vector<ModelObject*> items_of(const ModelObject& menu) const = 0;
    /// An empty name lets the scene choose one; sizes below 0 take the usual size.
    virtual Result<ModelObject*> create_dialog(const QString& name, const QRectF& rect) = 0;
    virtual Result<ModelObject*> create_control(int type, ModelObject& dialog, const QString& name, const QRectF& rect)
        = 0;
    virtual Result<ModelObject*> create_menu(const QString& name) = 0;
    virtual Selection selection() const = 0;
    /// Selects dialogs or controls, not both; the last becomes the current one. No object clears the selection.
    virtual Status select(const std::vector<ModelObject*>& objects) = 0;
    virtual std::vector<Event> events() const = 0;
    virtual std::vector<Problem> problems() const = 0;
};

} // namespace tarn

/// The main object of a plug-in that holds a scene's content: what the program needs of it to be its document.
class CScenePlug : public CPlugInfo {
public:
    /// The scene becomes a part of the document, which outlives it; before, it has no objects.
    virtual void join(tarn::Document& document) = 0;
    /// The world exists now: mouse tools and the overlay can be set up. A scene that did not join a document yet joins the
    /// world's.
    virtual void on_world_created(CBaseWorld* world) = 0;
    virtual tarn::Journal& journal() = 0;
    virtual tarn::SceneModel& model() = 0;
    virtual tarn::SceneEditor& editor() = 0;

    /// An empty scene; the undo history is forgotten, as with open_scene().
    virtual void new_scene() = 0;
    /// Replaces the scene by the file's; on failure nothing changes.
    virtual tarn::Status open_scene(const QString& path) = 0;
    /// A read-only file is kept, and that is a failure, unless it is to be replaced; it then stays read-only.
    virtual tarn::Status save_scene(const QString& path, bool replace_read_only = false) = 0;

    /// Runs the scene, or ends that: everything takes the state again that it had before.
    virtual void play(bool on) = 0;
    virtual bool is_playing() const = 0;
    /// The clock of the scene that runs, seconds since it began.
    virtual void advance(double now) = 0;
};
