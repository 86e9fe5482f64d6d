#pragma once

#include "page_base/bound_page.h"

/// Where the selected controls are, how large, how they are turned, and what they are anchored to.
class CChildCtrlDimension : public CBoundPage {
    Q_OBJECT

public:
    explicit CChildCtrlDimension(QWidget* parent = nullptr);

    /// The current control's width over its height, which "keep ratio" goes by; 0 for none, which does not count while
    /// the ratio is kept: a side that is 0 for a moment must not lose it.
    void set_aspect(float aspect);

protected:
    void OnInitDialog() override;
    void refresh() override;
    void row_edited(int id, const tarn::Value& value) override;
    void hideEvent(QHideEvent* event) override;

private:
    void follow_focus(const QWidget* focused);
    void show_tab_numbers(bool show);
    bool keeps_ratio() const;

    float m_aspect = 0;
};
