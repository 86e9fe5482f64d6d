#pragma once

#include "core/progress.h"
#include "core/status.h"
#include "plug_info.h"
#include "script/script_api.h"

#include <QRectF>
#include <QSize>
#include <QString>

#include <memory>
#include <vector>

class CBaseWorld;

namespace tarn {

class Document;
class Journal;
class ModelObject;
class SceneEditor;
struct ObjectKind;

/// What the program's automation needs of a scene plug-in beside the tree of objects in its document.
class SceneModel {
public:
    /// A new object as it is asked for. What is left out is as the author's button makes it.
    struct Making {
        QString name{};
        QRectF rect{0, 0, -1, -1};     ///< sizes below 0 take the usual size
        int type = -1;                 ///< of a kind that has types
        ModelObject* parent = nullptr; ///< null: the outermost that such objects can hang on
        double length = 10;            ///< of a timebar, seconds
    };
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

    struct KeyRow {
        float time; ///< seconds
        Value value;
        float ease;
    };

    struct LiveValue {
        const char* name; ///< none of the object's attributes has it
        Value value;
    };

    /// What ties an event of a control or a dialog to a function.
    struct Event {
        ModelObject* control = nullptr; ///< or the dialog; null when it is gone
        quint32 type = 0;
        QString function;
    };
    /// Something in the scene that names what is not there, or a function that cannot be run.
    struct Problem {
        ModelObject* object = nullptr; ///< where it is to be mended; null: in the function, or nowhere
        QString place{};               ///< what the object or the function is called
        QString text{};
        QString function{};      ///< whose text is to be mended; empty for none
        int line = 0;            ///< of that; 0 for none
        bool is_warning = false; ///< nothing is broken, but it may not be meant so
        quint32 timebar = 0;     ///< id of the timebar in which it arises; 0: without one
        float time = 0;          ///< of that, seconds
    };

    virtual ~SceneModel() = default;
    /// The same objects as scene functions find them.
    virtual const ScriptObjects& objects() const = 0;
    /// An object of the kind, one step of undo.
    virtual Result<ModelObject*> create(const ObjectKind& kind, const Making& making) = 0;
    /// Removes the object as the author's Delete does, without questions.
    virtual Status remove(ModelObject& object) = 0;
    /// The current timebar, or of a timebar its current object, of a timer object its current variable; null for none.
    virtual ModelObject* current(const ModelObject* parent) const = 0;
    /// Of a variable of a timer object, ascending in time; none of anything else.
    virtual std::vector<KeyRow> keys(const ModelObject& variable) const = 0;
    virtual Selection selection() const = 0;
    /// Selects dialogs or controls, not both; the last becomes the current one. No object clears the selection.
    virtual Status select(const std::vector<ModelObject*>& objects) = 0;
    virtual std::vector<Event> events() const = 0;
    virtual std::vector<Problem> problems() const = 0;
    /// Looks at the layout on screens of these sizes, pixels, and over the time of every timebar. What was found is among
    /// the problems until the next time, and until another scene is opened. Stopped, it leaves what was found before.
    virtual Status check_layout(const std::vector<QSize>& sizes, const Progress& progress) = 0;
    /// Makes the timebar the current one and shows it at the time, seconds; nothing happens when it is gone.
    virtual void show_time(quint32 timebar, float time) = 0;
    /// What is topmost at a place of the screen: an item of the open menu, the control whose list hangs open there, another
    /// control, or a dialog where it has none; null for nothing.
    virtual ModelObject* object_at(QPointF place) const = 0;
    /// The control whose list hangs open, or the open menu: the next press is for it, wherever that is. Null for none.
    virtual ModelObject* open_list() const = 0;
    /// What a player sees of an object that runs and no attribute of it tells: "minimized" of a dialog, for one.
    virtual std::vector<LiveValue> live_values(const ModelObject& object) const = 0;
};

/// A scene as it was authored at one moment. It is made and released in the thread of the model; any thread can write it.
class SceneCopy {
public:
    virtual ~SceneCopy() = default;
    virtual Status write(const QString& path) const = 0;
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

    /// Of the scene now, whatever runs or is under way.
    virtual std::unique_ptr<tarn::SceneCopy> copy_scene() const = 0;
    /// As open_scene(), with a scene that counts as changed and is that of the file `path`, which is not touched; a null
    /// path stands for a scene that was never saved.
    virtual tarn::Status recover_scene(const QString& package, const QString& path) = 0;

    // For pictures of the scene. What they show is undone by no step and saved by nothing.
    /// The screen that the scene was made for.
    virtual QSize design_size() const = 0;
    /// Shows a timebar, the first one when no name is given, at a time in seconds, as its author sees it there. Answers its
    /// length; fails when there is no such timebar.
    virtual tarn::Result<double> show_time(const QString& timebar, double time) = 0;
    /// Shows the one dialog of that name on a screen of `screen` pixels and nothing else; answers where it is there.
    virtual tarn::Result<QRectF> show_alone(const QString& dialog, QSize screen) = 0;
    /// In which of the scene's languages the running interface shows its texts; "" as the author wrote them. Not saved.
    virtual const QString& language() const = 0;
    /// Shows the texts of one of the scene's languages, in a preview too; fails when it has no such language.
    virtual tarn::Status show_texts(const QString& language) = 0;
    /// It is going to be drawn on a screen of `screen` pixels, without a view: what is to be seen there comes to be.
    virtual void prepare_picture(QSize screen) = 0;
    /// Whether something that was drawn since then is still to come, such as the first frame of a movie. The event loop
    /// brings it.
    virtual bool awaits_picture() const = 0;

    /// Runs the scene, or ends that: everything takes the state again that it had before.
    virtual void play(bool on) = 0;
    virtual bool is_playing() const = 0;
    /// The clock of the scene that runs, seconds since it began.
    virtual void advance(double now) = 0;
};
