#pragma once

#include "engine/scene_editor.h"

#include <QObject>

class CGuiPlugScene;

namespace tarn {

class AidsLayer;
class WorldMouse;

/// The commands that edit the interface: they work on what is selected.
class GuiSceneEditor : public SceneEditor {
public:
    GuiSceneEditor(CGuiPlugScene& scene, AidsLayer& aids, WorldMouse& world)
        : m_scene(scene), m_aids(aids), m_world(world)
    {
    }

    /// Numbers of the commands; a menu answers them.
    enum Command : int {
        cut = 1,
        copy,
        paste,
        duplicate,
        remove,
        all,
        copy_own_look,
        paste_own_look,
        to_top,
        one_up,
        one_down,
        to_bottom,
        lock,
        hide,
        to_dialog,
        add_camera,
        add_path,
        add_panel,
    };

    std::vector<EditCommand> commands() const override;
    std::vector<EditCommand> context_commands(QPointF place) override;
    std::vector<EditCommand> selection_commands() const override;
    bool cancel_creation() override;
    bool create_armed() override;
    QRectF selected_area() const override;
    Status drop_picture(const QString& file, QPointF place) override;
    std::vector<ViewSetting> view_settings() const override;
    void set_view_setting(const QString& key, quint32 value) override;
    Status run(int command) override;
    std::optional<EditableText> text_at(QPointF place) override;

private:
    EditCommand described(Command command) const;
    std::vector<EditCommand> all_commands() const;
    bool is_enabled(int command) const;
    /// What the clipboard has.
    struct Pastable {
        bool objects = false;
        bool look = false;
    };
    Pastable can_paste() const;

    CGuiPlugScene& m_scene;
    AidsLayer& m_aids;
    WorldMouse& m_world;
    QPointF m_menu_place;                        ///< of the context menu that was opened last
    mutable std::optional<Pastable> m_can_paste; ///< none until asked for since the clipboard changed
    mutable QObject m_clipboard_listener;
};

} // namespace tarn
