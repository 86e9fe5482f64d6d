#pragma once

#include "gui_core/gui_core.h"
#include "page_base/gui_child_dlg.h"

/// The letters of what a look has texts for: their size, weight and shadow, and their colour in each state. A part of the
/// pages where an author designs elements and fonts.
class CChildElementText : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CChildElementText(QWidget* parent = nullptr) : CGuiChildDlg(QStringLiteral("CChildElementText"), parent) {}

    static constexpr int template_id = 7245;

    /// `owner` is one with texts, see tarn::look_owner().
    void show_owner(int owner);

Q_SIGNALS:
    /// The page changed how the texts look.
    void look_edited();

protected:
    void OnInitDialog() override;

private:
    tarn::LookPart text_part(tarn::VisualState state) const; ///< the colour of the owner's texts
    bool can_edit() const;
    void on_size(double pixels);
    void on_style();
    void on_swatch(tarn::VisualState state);
    void on_source(tarn::VisualState state, int row);
    /// Lets the change be seen everywhere.
    void changed();

    int m_owner = -1;
};
