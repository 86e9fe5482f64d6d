#pragma once

#include "gui_core/gui_core.h"
#include "page_base/gui_child_dlg.h"

/// Check boxes and radio buttons as they look in every state, off and on. A click on one that is off chooses the box, on
/// one that is on the mark, which lies over the box. A part of the page where an author designs elements.
class CDlgDesignCheck : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgDesignCheck(QWidget* parent = nullptr) : CGuiChildDlg(QStringLiteral("CDlgDesignCheck"), parent) {}

    static constexpr int template_id = 7250;

    /// Whether the part is a box or a mark of what this page is for.
    static bool suits(const tarn::LookPart& part);
    void show_part(const tarn::LookPart& part);

Q_SIGNALS:
    void part_chosen(const tarn::LookPart& part);

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;

private:
    int m_owner = -1;
};
