#pragma once

#include "core/model_object.h"
#include "dialog_state.h"
#include "draw_slot.h"
#include "gui_event.h"
#include "selection_record.h"
#include "view_aids.h"

#include <QHash>
#include <QRectF>
#include <QSize>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class CDXUTControl;
class CDXUTDialog;

namespace tarn {

/// Where the mouse and the keyboard are while the interface runs. Not saved, not recorded.
struct LiveState {
    CDXUTControl* hovered = nullptr;
    CDXUTControl* pressed = nullptr;
    CDXUTControl* focused = nullptr;
    CDXUTControl* popup = nullptr;               ///< whose list is dropped down
    const CDXUTDialog* caption_dialog = nullptr; ///< whose caption button is under the mouse
    int caption_button = -1;                     ///< CDXUTDialog::CaptionButton

    /// Where `control` stands, null does.
    void forget(const CDXUTControl* control);
};

/// A whole interface that is not part of the scene yet: read from a package, or put together for a merge.
struct GuiContent {
    StatePtr core;                     ///< CoreState
    std::shared_ptr<CDXUTDialog> root; ///< its state becomes the root dialog's
    std::vector<std::shared_ptr<CDXUTDialog>> dialogs;
    std::vector<std::shared_ptr<CDXUTControl>> controls;
};

} // namespace tarn

/// The model of the interface: its dialogs and controls, the selection, and the screen that it is laid out on.
class CGuiCore : public tarn::ModelObject {
public:
    explicit CGuiCore(tarn::Journal& journal);
    ~CGuiCore() override;

    // Objects
    const QList<CDXUTDialog*>& GetDialogs() const { return core_state().dialogs; }
    CDXUTDialog* GetRootDialog() const { return m_root.get(); }
    /// All controls in the order in which they were made.
    const std::vector<CDXUTControl*>& controls() const;
    CDXUTDialog* find_dialog(quint32 id) const; ///< null when no attached dialog has the id
    CDXUTControl* find_control(quint32 id) const;

    /// A new dialog on top of the others, "Dialog<id>" when `name` is empty; null when no ids are left.
    CDXUTDialog* create_dialog(const QRect& rect, const QString& name = {});
    /// A new control on top of its dialog's; null when `type` cannot be made or no ids are left.
    CDXUTControl* create_control(int type, CDXUTDialog* dialog, const QRectF& rect, const QString& name = {});
    void remove_dialog(CDXUTDialog* dialog);
    /// The same for many, with one change of the list.
    void remove_dialogs(const std::vector<CDXUTDialog*>& dialogs);
    void remove_control(CDXUTControl* control);
    void move_control_to(CDXUTControl* control, CDXUTDialog* dialog);
    /// The same for many controls, none of them null, with one pass over the list of each dialog that loses any.
    void remove_controls(const std::vector<CDXUTControl*>& controls);
    void move_controls_to(const std::vector<CDXUTControl*>& controls, CDXUTDialog* dialog);
    /// `down` 0 moves the dialog one layer up, 1 one down; false at the end of the order.
    bool AdjustDialogLayer(CDXUTDialog* dialog, int down);
    /// `order` holds the present dialogs, from the lowest layer to the top one.
    void reorder_dialogs(const QList<CDXUTDialog*>& order);

    // Content as a whole
    /// A control object of `type` that belongs to no dialog yet; null when the type cannot be made.
    std::shared_ptr<CDXUTControl> make_control(int type);
    std::shared_ptr<CDXUTDialog> make_dialog();
    /// Replaces the whole interface; recorded like any change.
    void install(tarn::GuiContent content);
    /// Adds the dialogs of `content` above the present ones; ids have to be unused.
    void append(tarn::GuiContent content);
    /// An empty interface; recorded like any change.
    void clear();
    /// Forgets the undo history and every object that only it kept alive.
    void forget_history();
    /// Differs after each time that objects may have ceased to exist.
    quint64 generation() const { return m_generation; }
    /// An id that no object has or had; 0 when all are used up, which only a made-up package brings about.
    quint32 take_id();
    /// How many times take_id() still answers an id.
    quint32 ids_left() const;
    static constexpr quint32 max_id = 0x7fffffff;
    /// The states of all objects as they are now, shared until one changes.
    std::vector<tarn::Journal::Entry> states() const;
    /// Exchanges the objects' states with `states`, past the journal.
    void swap_states(std::vector<tarn::Journal::Entry>& states);

    // Selection
    tarn::SelectionRecord& selection()
    {
        ensure_links();
        prune_selection();
        return m_selection;
    }
    const tarn::SelectionRecord& selection() const { return const_cast<CGuiCore*>(this)->selection(); }
    void SelectDialog(CDXUTDialog* dialog, bool add);
    void ClearDialogSelection();
    void SelectControl(CDXUTControl* control, bool add);
    /// Adds them all to the selection; the last becomes the current one.
    void SelectControls(const std::vector<CDXUTControl*>& controls);
    void ClearCtrlSelection();
    void EnableGui(bool editing);
    tarn::ViewAids& view_aids() { return m_view_aids; }
    const tarn::ViewAids& view_aids() const { return m_view_aids; }

    // Screen
    QSize screen_size() const { return m_screen; }
    /// Dialogs and controls re-anchor; nothing of the saved state changes.
    void set_screen_size(QSize size);
    const QList<quint32>& guides(Qt::Orientation lines) const
    {
        return lines == Qt::Vertical ? core_state().vertical_guides : core_state().horizontal_guides;
    }
    /// Moves a guide line, pixels from the screen's corner; none as `from` adds one, none as `to` removes it. Of two in
    /// one place one is left.
    bool move_guide(Qt::Orientation lines, std::optional<quint32> from, std::optional<quint32> to);
    QSize design_size() const { return {core_state().screen_width, core_state().screen_height}; }

    // Running
    /// Hears what the user makes happen to the running interface. It comes while the input is still worked on: whoever
    /// wants to change the model then waits until that is done.
    std::function<void(const tarn::GuiEvent&)> on_event;
    /// Nothing when the event does not happen to controls of that type, or to dialogs.
    void raise(GuiEventType type, CDXUTControl& control);
    void raise(GuiEventType type, CDXUTDialog& dialog);

    // Drawing
    tarn::LiveState& live()
    {
        ensure_links();
        return m_live;
    }
    /// Which control has the keyboard while the interface runs; null, or one that is not enabled: none.
    void set_focused(CDXUTControl* control);
    /// The control whose list is dropped down; null for none.
    void set_popup(CDXUTControl* control) { m_live.popup = control; }
    const tarn::LiveState& live() const
    {
        ensure_links();
        return m_live;
    }
    /// Takes an encoded picture into the scene, in place of one of that name.
    void set_texture(const QString& name, const QByteArray& encoded);
    QStringList texture_names() const;
    /// Takes an encoded picture into the scene and answers its name: `wanted`, one like it where another picture has
    /// that, or the name under which the scene has this very picture already.
    QString add_texture(const QString& wanted, const QByteArray& encoded);
    /// The area of the screen that has to be drawn again since the last call.
    QRectF take_damage();
    void add_damage(const QRectF& area) { m_damage |= area; }
    /// Everything that is drawn of a dialog, controls that stick out included.
    QRectF dialog_bounds(const CDXUTDialog& dialog) const;

    /// A list of dialogs or controls changed: the index is made anew when it is next needed.
    void structure_changed() { m_indexed = false; }
    /// A list was exchanged as a whole (by undo): who belongs to whom, and what is still there to be selected, is found
    /// out anew when it is next asked for.
    void links_changed()
    {
        prune_selection(); // What undo brings back is not selected.
        m_indexed = m_linked = false;
    }
    void ensure_links() const
    {
        if (!m_linked)
            ensure_index();
    }

    const char* class_name() const override { return "CGuiCore"; }
    bool is_attached() const override { return true; }
    void state_changed() override;

    const tarn::CoreState& core_state() const { return state<tarn::CoreState>(); }
    tarn::DrawSlot& draw_slot() const { return m_draw_slot; }

private:
    void ensure_index() const;
    void rebuild_index();
    void relink();
    struct Taken {
        std::vector<CDXUTControl*> controls;
        std::size_t selected = 0; ///< of them
    };
    /// Takes those of the controls that are part of the scene, and do not belong to `stays`, out of their dialogs.
    Taken take_out(const std::vector<CDXUTControl*>& controls, const CDXUTDialog* stays);
    void prune_selection();
    void follow_current_control();
    void keep(std::shared_ptr<tarn::ModelObject> object) { m_pool.push_back(std::move(object)); }

    std::shared_ptr<CDXUTDialog> m_root;
    /// Every object that is part of the scene or of its history.
    std::vector<std::shared_ptr<tarn::ModelObject>> m_pool;
    quint32 m_next_id = 2; ///< never goes back, not even by undo
    std::vector<CDXUTControl*> m_controls;
    std::vector<CDXUTDialog*> m_attached_dialogs; ///< those of the index, and those made since
    QList<CDXUTDialog*> m_known_dialogs;          ///< the list that the index was made from
    quint64 m_generation = 1;
    bool m_indexed = false;
    bool m_linked = true;
    tarn::SelectionRecord m_selection;
    bool m_selection_stale = false; ///< controls were removed that it may hold; pruned once for any number of them
    tarn::LiveState m_live;
    tarn::ViewAids m_view_aids;
    QSize m_screen{1280, 720};
    QSize m_known_design{1280, 720}; ///< the design size for which the dialogs know where they are drawn
    QRectF m_damage;
    mutable tarn::DrawSlot m_draw_slot;
};
