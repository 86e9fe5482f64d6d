#pragma once

#include "core/document.h"
#include "core/free_names.h"
#include "core/model_object.h"
#include "dialog_state.h"
#include "draw_slot.h"
#include "gui_event.h"
#include "look_parts.h"
#include "selection_history.h"
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
class CDXUTMenu;
class CDXUTMenuItem;
class CGuiStyle;
class QImage;

namespace tarn {

class MovieLink;
class WorldLink;

class OpenMenu;
class StyleLook;
class Transitions;
struct FontStyle;
struct StyleState;

/// A button of a dialog's caption bar.
struct CaptionSpot {
    CDXUTDialog* dialog = nullptr;
    int button = -1; ///< CDXUTDialog::CaptionButton

    bool operator==(const CaptionSpot&) const = default;
};

/// Where the mouse and the keyboard are while the interface runs. Not saved, not recorded.
struct LiveState {
    CDXUTControl* hovered = nullptr;
    CDXUTControl* pressed = nullptr;
    CDXUTControl* focused = nullptr;
    CDXUTControl* popup = nullptr;  ///< whose list is dropped down
    CDXUTDialog* clicked = nullptr; ///< the dialog that was clicked last
    CaptionSpot caption_hovered;
    CaptionSpot caption_pressed;
    bool caret_shown = true; ///< carets blink
    QPointF mouse;           ///< pixels of the screen
    /// The dialog that something in the world shows under the mouse: `mouse` is where that is on the dialog's own place of
    /// the screen. Null while the mouse is over the screen.
    const CDXUTDialog* in_world = nullptr;

    /// What is not part of the scene any more goes.
    void prune();
};

/// A part of what is drawn, in a state: what the pages of a style's design work on.
struct LookPart {
    int owner = -1; ///< a control type, look_owner_dialog or look_owner_menu; -1 for none
    int part = 0;   ///< see look_owner()
    VisualState state = VisualState::Normal;

    bool operator==(const LookPart&) const = default;
};

struct NewMenuItem {
    QString text;
    bool separator = false;
    int level = 0;
};

} // namespace tarn

/// The model of the interface: its dialogs and controls, the selection, and the screen that it is laid out on.
class CGuiCore : public tarn::ModelObject {
public:
    /// The interface becomes a part of the document, with its kinds of objects; it must not outlive the document's use.
    explicit CGuiCore(tarn::Document& document);
    ~CGuiCore() override;

    // Objects
    /// From the bottom layer to the top, without the root dialog.
    const QList<CDXUTDialog*>& GetDialogs() const
    {
        if (m_dialogs_stale)
            find_dialogs();
        return m_dialogs;
    }
    CDXUTDialog* GetRootDialog() const { return m_root.get(); }
    /// All controls in the order in which they were made.
    const std::vector<CDXUTControl*>& controls() const;
    CDXUTDialog* find_dialog(quint32 id) const; ///< null when no attached dialog has the id
    CDXUTControl* find_control(quint32 id) const;
    /// In the order in which they were made.
    const QList<CDXUTMenu*>& GetMenus() const
    {
        if (m_menus_stale)
            find_menus();
        return m_menus;
    }
    CDXUTMenu* find_menu(quint32 id) const;
    CDXUTMenuItem* find_menu_item(quint32 id) const;

    /// A new dialog on top of the others, "Dialog1" or the next free number when `name` is empty; null when no ids are
    /// left.
    CDXUTDialog* create_dialog(const QRect& rect, const QString& name = {});
    /// A new control on top of its dialog's; null when `type` cannot be made or no ids are left.
    CDXUTControl* create_control(int type, CDXUTDialog* dialog, const QRectF& rect, const QString& name = {});
    /// `stem` with the smallest number, from 1 on, that makes it the name of no dialog and no control.
    QString free_name(const QString& stem) const;
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
    /// A new menu, "Menu<id>" when `name` is empty, becomes the current one; null when no ids are left.
    CDXUTMenu* create_menu(const QString& name = {});
    void remove_menu(CDXUTMenu* menu);
    /// A new item before line `place` of the menu; null when no ids are left.
    CDXUTMenuItem* create_menu_item(CDXUTMenu& menu, int place, const tarn::NewMenuItem& item);
    /// The item and its submenu.
    void remove_menu_item(CDXUTMenuItem* item);

    // Content as a whole
    /// An object that is not part of the scene yet, with an id of its own; the type is one that can be made.
    std::shared_ptr<CDXUTControl> make_control(tarn::StatePtr state);
    /// Puts the control on top of the dialog's own.
    void add_control(CDXUTControl& control, CDXUTDialog& dialog);
    const tarn::ObjectKind& root_kind() const;
    const tarn::ObjectKind& dialog_kind() const { return *m_dialog_kind; }
    const tarn::ObjectKind& control_kind() const { return *m_control_kind; }
    const tarn::ObjectKind& menu_kind() const { return *m_menu_kind; }
    const tarn::ObjectKind& style_kind() const { return *m_style_kind; }

    // Looks
    /// Those that the scene keeps, unnamed ones too.
    QList<CGuiStyle*> GetStyles() const;
    /// The author's own of that name; null when there is none.
    CGuiStyle* find_style(const QString& name) const;
    /// Which is in force; null for the program's own look. One without a name has what the author changed since he took
    /// on the one that it is based on.
    CGuiStyle* scene_style() const;
    /// The named one that is in force, whatever was changed of it; null for the program's own look.
    CGuiStyle* worn_style() const;
    /// What is drawn: what the scene's style says, and those that it is based on.
    const tarn::StyleLook& look() const;
    /// A style, or which one is in force, is another.
    void look_changed();
    /// What has been worked out from the looks goes for every control, dialog and menu, and is drawn anew.
    void update_all_elements();
    /// A new style of the scene; null when no ids are left.
    CGuiStyle* add_style(tarn::StatePtr state);
    /// Null for the program's own look. What the author changed of the style before, and a style that was only lent
    /// by its file, go with it.
    void set_scene_style(CGuiStyle* style);
    /// The interface keeps its look.
    void remove_style(CGuiStyle& style);
    /// The elements of all dialogs and controls are the program's own again.
    void InitElements() { set_scene_style(nullptr); }
    /// The look as one style that is based on none.
    tarn::StatePtr flat_style() const;

    // The author's changes of the look; each is a part of the scene's style from then on.
    const tarn::LookPart& current_element() const { return m_current_element; }
    void set_current_element(const tarn::LookPart& element) { m_current_element = element; }
    /// The room in the atlas, pixels, of part `index / 5` of a control type in the state `index % 5`; empty where it has
    /// no picture.
    QRect get_default_rect(int type, int index) const;
    QRect default_rect(const tarn::LookPart& part) const;
    /// Where the part's picture is in the atlas, pixels; empty where it has none.
    QRect texture_rect(const tarn::LookPart& part) const;
    QMargins edge_widths(const tarn::LookPart& part) const; ///< pixels of the atlas
    /// Straight alpha; null where the part has none.
    QImage texture(const tarn::LookPart& part) const;
    /// Puts the picture, which fits into the part's default rectangle, into the atlas: it is all of the part's from then on.
    void set_element_texture(const tarn::LookPart& part, const QImage& picture);
    void set_edge_widths(const tarn::LookPart& part, const QMargins& edges);
    /// What the scene's style says of the part's colour, as a text of a style; empty for nothing.
    QString element_color(const tarn::LookPart& part) const;
    void set_element_color(const tarn::LookPart& part, const QString& text);
    void set_token(const QString& name, quint32 argb);
    void set_look_font(int owner, const QString& family);
    void set_look_font_size(int owner, int pixels); ///< 0 for the usual one
    void set_look_font_style(int owner, const tarn::FontStyle& style);
    /// The part in that state is again what the style was when it was taken on.
    void reset_element(const tarn::LookPart& part);
    bool is_element_changed(const tarn::LookPart& part) const;

    // Selection
    tarn::SelectionRecord& selection()
    {
        follow_structure();
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
    /// The menu that `field` of the control or dialog names is to open with its corner at `place`, pixels of the screen,
    /// when those who answer what was raised before are done.
    void raise_menu(tarn::ModelObject& owner, tarn::FieldKey field, QPointF place);
    /// Opens it. Nothing happens when there is no such menu, or its owner is not shown any more.
    void open_bound_menu(tarn::ModelObject& owner, tarn::FieldKey field, QPointF place);
    /// The menu opens in the place of one that is open; one without items does not. `owner` is what it is for, or null.
    void pop_menu(CDXUTMenu& menu, QPointF place, tarn::ModelObject* owner = nullptr);
    void close_menu();
    /// The user chose the item in the open menu, which closes.
    void choose_menu_item(CDXUTMenuItem& item);
    tarn::OpenMenu* open_menu() const; ///< null while none is open
    /// The look or the items of the menu are others.
    void menu_changed(const CDXUTMenu& menu);

    // Drawing
    tarn::LiveState& live()
    {
        follow_structure();
        return m_live;
    }
    /// Which control has the keyboard while the interface runs; null, or one that is not enabled: none.
    void set_focused(CDXUTControl* control);
    /// The dialog that the keyboard is in: that of the focused control, the one that was clicked last or the topmost; the
    /// root dialog when no other is shown.
    CDXUTDialog* active_dialog() const;
    /// Visible dialogs from the top layer to the bottom, the root dialog last.
    std::vector<CDXUTDialog*> shown_dialogs() const;
    /// Puts the dialog above the others of its layer and makes it the active one.
    void activate(CDXUTDialog& dialog);
    /// The clock of the running interface, seconds. True when something is to be drawn anew.
    bool advance(double now);
    /// How controls come to look as they do now, while the interface runs.
    const tarn::Transitions& transitions() const { return *m_transitions; }
    /// The caret is seen for the next half of its period, since it moved.
    void show_caret();
    /// Where a dialog is that is minimised to the bottom: beside those that were before, in rows from the bottom up.
    QRectF minimized_bar(const CDXUTDialog& dialog) const;
    /// The world that the interface lies over; null for none. It has to outlive its use.
    void set_world(tarn::WorldLink* world) { m_world = world; }
    tarn::WorldLink* world() const { return m_world; }
    /// Who plays movies; null while nobody does. It has to outlive its use.
    void set_movies(tarn::MovieLink* movies) { m_movies = movies; }
    tarn::MovieLink* movies() const { return m_movies; }
    /// Whether the dialog is shown by something in the world, and not on the screen.
    bool is_in_world(const CDXUTDialog& dialog) const;
    /// The control whose list is dropped down; null for none.
    void set_popup(CDXUTControl* control) { m_live.popup = control; }
    const tarn::LiveState& live() const { return const_cast<CGuiCore*>(this)->live(); }
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

    /// A list of dialogs or controls may have changed: what is worked out from them is found anew when it is next asked for.
    void structure_changed();
    /// A dialog or control was given another name.
    void names_changed() { m_names.forget(); }

    tarn::ObjectState* fresh_state() const override;
    const char* class_name() const override { return "CGuiCore"; }
    void state_changed() override;
    void children_changed() override;

    const tarn::CoreState& core_state() const { return state<tarn::CoreState>(); }
    tarn::DrawSlot& draw_slot() const { return m_draw_slot; }

private:
    void find_dialogs() const;
    void find_controls() const;
    void find_menus() const;
    void follow_structure();
    void before_selecting();
    void damage_current_dialog();
    void step_travelled(const tarn::Journal::Step& step);
    void select_again(const tarn::KeptSelection& kept);
    template <class Add>
    void add_named(const QString& name, Add add);
    void add_kinds();
    void add_style_kind();
    void change_look(const std::function<void(tarn::StyleState&)>& change);
    CGuiStyle* changed_style();
    void drop_unused_styles();
    friend class CDXUTDialog;
    void damage_active();
    bool blink(double now);
    void shown_changed();

    std::shared_ptr<CDXUTDialog> m_root;
    const tarn::ObjectKind* m_dialog_kind = nullptr;
    const tarn::ObjectKind* m_control_kind = nullptr;
    const tarn::ObjectKind* m_menu_kind = nullptr;
    const tarn::ObjectKind* m_menu_item_kind = nullptr;
    const tarn::ObjectKind* m_style_kind = nullptr;
    mutable std::unique_ptr<tarn::StyleLook> m_look; ///< worked out from the styles
    mutable bool m_look_stale = true;
    tarn::LookPart m_current_element;
    quint32 m_known_style = 0; ///< id of the scene's style when the look was last told to be another
    // Worked out from the lists of ids, and found anew after these changed.
    mutable QList<CDXUTDialog*> m_dialogs;
    mutable std::vector<CDXUTControl*> m_controls; ///< by id
    mutable QList<CDXUTMenu*> m_menus;
    mutable bool m_dialogs_stale = false;
    mutable bool m_controls_stale = false;
    mutable bool m_menus_stale = false;
    bool m_structure_stale = false; ///< the selection, and where the mouse is, may be of objects that are gone
    mutable tarn::FreeNames m_names;
    tarn::SelectionRecord m_selection;
    tarn::SelectionHistory m_selection_history;
    tarn::SelectionHistory::Kept m_selected_again; ///< what undo or redo brought back; null: nothing since then
    tarn::LiveState m_live;
    std::unique_ptr<tarn::Transitions> m_transitions;
    double m_now = 0;                ///< seconds, of advance()
    double m_caret_since = 0;        ///< when the caret moved last
    quint32 m_minimized_dialogs = 0; ///< how often one was minimised
    std::unique_ptr<tarn::OpenMenu> m_open_menu;
    tarn::ViewAids m_view_aids;
    tarn::WorldLink* m_world = nullptr;
    tarn::MovieLink* m_movies = nullptr;
    QSize m_screen{1280, 720};
    QSize m_known_design{1280, 720}; ///< the design size for which the dialogs know where they are drawn
    QRectF m_damage;
    QRectF m_raised; ///< pixels of the screen; where controls showed something above all others
    mutable tarn::DrawSlot m_draw_slot;
};
