#pragma once

#include "gui_core/gui_core.h"
#include "page_base/gui_child_dlg.h"

class CChildElementText;
class CFontSample;
class QComboBox;

/// The texts of the interface's look, for each control type, dialogs and menus: their font, from the system or from the
/// package, and their letters.
class CDlgDesignFont : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgDesignFont(QWidget* parent = nullptr) : CGuiChildDlg(QStringLiteral("CDlgDesignFont"), parent) {}

    void on_world_created(CBaseWorld* world) override;
    void on_set_active(bool active) override;
    void update_ui(int code) override;
    void model_changed(const tarn::ModelChange& change) override;

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;

private:
    int owner() const;
    QString family() const;
    void choose_owner(int owner);
    void follow_selection();
    void refresh();
    void list_families();
    void show_family();
    void show_notice();
    void on_family(int row);
    void on_add();
    void on_remove();
    /// Lets the change be seen everywhere.
    void changed();

    QComboBox* m_owners = nullptr;
    QComboBox* m_families = nullptr;
    CFontSample* m_sample = nullptr;
    CChildElementText* m_texts = nullptr;
    quint64 m_listed_fonts = 0;       ///< tarn::fonts_revision() when the families were listed
    const void* m_followed = nullptr; ///< what was selected when the page last followed; only compared
};
