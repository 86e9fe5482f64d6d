#pragma once

#include "gui_core/gui_core.h"
#include "page_base/gui_child_dlg.h"

class CChildElementText;
class CDlgDesignButton;
class CDlgDesignCheck;
class CStateButton;
class QComboBox;

/// The elements of the interface's look: a part of a control type, of dialogs or of menus in each of its states, its
/// picture, its colour, and the named colours of the style.
class CDlgElementEditor : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgElementEditor(QWidget* parent = nullptr);

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;
    void model_changed(const tarn::ModelChange& change) override;

Q_SIGNALS:
    /// The fonts of what the page shows are wanted.
    void font_page_wanted();

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    const tarn::LookOwner& owner() const;
    tarn::LookPart part() const; ///< what the page's boxes choose
    void follow_click();
    void follow_selection();
    void fill_owners();
    void fill_parts();
    void fill_tokens();
    void choose(const tarn::LookPart& part);
    void refresh();
    /// Lets the page have those of its parts that the element has a use for.
    void show_sub_pages();
    void show_states();
    void on_color();
    void on_source(int row);
    void on_token_color();
    void on_new_token();
    void on_reset();
    /// Lets the change be seen everywhere.
    void changed();

    QComboBox* m_owners = nullptr;
    QComboBox* m_parts = nullptr;
    QComboBox* m_sources = nullptr; ///< of the colour: none, its own, or a named one
    QComboBox* m_tokens = nullptr;
    CDlgDesignButton* m_texture = nullptr;
    CDlgDesignCheck* m_check = nullptr;
    CChildElementText* m_texts = nullptr;
    tarn::VisualState m_state = tarn::VisualState::Normal;
    const void* m_followed = nullptr; ///< what was selected when the page last followed; only compared
};
