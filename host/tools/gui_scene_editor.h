#pragma once

#include "engine/scene_editor.h"

#include <QObject>

class CGuiPlugScene;

namespace tarn {

class AidsLayer;

/// The commands that edit the interface: they work on what is selected.
class GuiSceneEditor : public SceneEditor {
public:
    GuiSceneEditor(CGuiPlugScene& scene, const AidsLayer& aids) : m_scene(scene), m_aids(aids) {}

    /// Numbers of the commands; a menu answers them.
    enum Command : int {
        cut = 1,
        copy,
        paste,
        duplicate,
        remove,
        all,
        to_top,
        one_up,
        one_down,
        to_bottom,
        lock,
        hide,
        to_dialog,
    };

    std::vector<EditCommand> commands() const override;
    std::vector<EditCommand> context_commands(QPointF place) override;
    std::vector<EditCommand> selection_commands() const override;
    bool cancel_creation() override;
    Status run(int command) override;
    std::optional<EditableText> text_at(QPointF place) override;

private:
    EditCommand described(Command command) const;
    std::vector<EditCommand> all_commands() const;
    bool is_enabled(int command) const;
    bool can_paste() const;

    CGuiPlugScene& m_scene;
    const AidsLayer& m_aids;
    mutable std::optional<bool> m_can_paste; ///< none until asked for since the clipboard changed
    mutable QObject m_clipboard_listener;
};

} // namespace tarn
