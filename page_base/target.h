#pragma once

#include <QtGlobal>

#include <optional>
#include <span>
#include <vector>

class CDXUTControl;
class CGuiPlugScene;

namespace tarn {

class ModelObject;
enum class WorldType : quint8;

/// What a page edits: which objects of the scene, and the notification codes that tell of them. Targets have no state of
/// their own, so pages share them.
class Target {
public:
    virtual ~Target() = default;

    /// The object that a page shows; null when there is nothing to edit.
    virtual ModelObject* current(CGuiPlugScene& scene) const = 0;
    /// All that an edit is written to, in the order of selection, the current one among them; empty without a current
    /// one.
    virtual std::vector<ModelObject*> selected(CGuiPlugScene& scene) const = 0;
    /// After which codes other objects, or other values of theirs, may have to be shown.
    virtual std::span<const int> codes() const = 0;
    /// What a page broadcasts after it changed the objects.
    virtual int changed_code() const = 0;
    /// That code also tells of what is no attribute of an object, as which one is current.
    virtual bool code_tells_more() const { return false; }
};

/// The selected dialogs, while dialogs are selected and the interface is edited.
class SelectedDialogs : public Target {
public:
    ModelObject* current(CGuiPlugScene& scene) const override;
    std::vector<ModelObject*> selected(CGuiPlugScene& scene) const override;
    std::span<const int> codes() const override;
    int changed_code() const override;
};

/// The selected controls, likewise; with a type only those of it, and only while the current one is of it.
class SelectedControls : public Target {
public:
    static constexpr int any_type = -1;

    explicit SelectedControls(int type = any_type) : m_type(type) {}
    int type() const { return m_type; }

    ModelObject* current(CGuiPlugScene& scene) const override;
    std::vector<ModelObject*> selected(CGuiPlugScene& scene) const override;
    std::span<const int> codes() const override;
    int changed_code() const override;

protected:
    CDXUTControl* current_control(CGuiPlugScene& scene) const;
    static std::vector<ModelObject*> selected_of(CGuiPlugScene& scene, int type);

private:
    int m_type;
};

/// Those of the selected controls that are of the current one's type, whatever that is.
class SelectedLikeCurrent : public SelectedControls {
public:
    std::vector<ModelObject*> selected(CGuiPlugScene& scene) const override;
};

/// The current menu, while the interface is edited.
class CurrentMenu : public Target {
public:
    ModelObject* current(CGuiPlugScene& scene) const override;
    std::vector<ModelObject*> selected(CGuiPlugScene& scene) const override;
    std::span<const int> codes() const override;
    int changed_code() const override;
};

/// The item of the current menu that was chosen last.
class CurrentMenuItem : public CurrentMenu {
public:
    ModelObject* current(CGuiPlugScene& scene) const override;
};

/// The selected objects of the 3D world, while they are edited; with a type only those of it, and only while the one
/// that was selected last is of it.
class SelectedWorldObjects : public Target {
public:
    SelectedWorldObjects() = default;
    explicit SelectedWorldObjects(WorldType type) : m_type(type) {}
    const std::optional<WorldType>& type() const { return m_type; } ///< none: any

    ModelObject* current(CGuiPlugScene& scene) const override;
    std::vector<ModelObject*> selected(CGuiPlugScene& scene) const override;
    std::span<const int> codes() const override;
    int changed_code() const override;
    bool code_tells_more() const override { return true; }

private:
    std::optional<WorldType> m_type;
};

/// What the current timebar animates of the world object that was selected last: its timer object.
class TimerObjectOfSelection : public SelectedWorldObjects {
public:
    ModelObject* current(CGuiPlugScene& scene) const override;
    std::vector<ModelObject*> selected(CGuiPlugScene& scene) const override;
};

/// The current timebar, except during a preview.
class CurrentTimebar : public Target {
public:
    ModelObject* current(CGuiPlugScene& scene) const override;
    std::vector<ModelObject*> selected(CGuiPlugScene& scene) const override;
    std::span<const int> codes() const override;
    int changed_code() const override;
    bool code_tells_more() const override { return true; }
};

/// Its current timer object.
class CurrentTimerObject : public CurrentTimebar {
public:
    ModelObject* current(CGuiPlugScene& scene) const override;
};

/// The current variable of that.
class CurrentVariable : public CurrentTimebar {
public:
    ModelObject* current(CGuiPlugScene& scene) const override;
};

inline const CurrentTimebar current_timebar;
inline const CurrentTimerObject current_timer_object;
inline const CurrentVariable current_variable;
inline const CurrentMenu current_menu;
inline const CurrentMenuItem current_menu_item;
inline const SelectedDialogs selected_dialogs;
inline const SelectedWorldObjects selected_world_objects;
inline const TimerObjectOfSelection timer_object_of_selection;
inline const SelectedControls selected_controls;
inline const SelectedLikeCurrent selected_like_current;

} // namespace tarn
