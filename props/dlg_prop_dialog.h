#pragma once

#include "page_base/bound_page.h"

/// Name, title, flags, place and anchor of the selected dialogs, and the texture on which a dialog is drawn in the world.
/// Place, size and texture are the current dialog's alone.
class CDlgPropDialog : public CBoundPage {
    Q_OBJECT

public:
    explicit CDlgPropDialog(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
    void refresh() override;
    void row_edited(int id, const tarn::Value& value) override;

private:
    void on_keep_ratio();
    void on_scale_with_window();
    void show_binding();
    void on_bind();
    void on_unbind();

    double m_aspect = 0; ///< width over height of the current dialog; 0 when it has no height
};
