#pragma once

#include "page_base/bound_page.h"

class CChildCtrlDimension;
class CMyRollup;

/// What the selected controls have in common, whatever their type: name, flags and colour tag, and below them the
/// pages for place, style and the attributes of the type.
class CDlgPropControl : public CBoundPage {
    Q_OBJECT

public:
    explicit CDlgPropControl(QWidget* parent = nullptr);

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;

protected:
    void OnInitDialog() override;
    void refresh() override;

private:
    void create_sub_pages();

    CMyRollup* m_rollup = nullptr;
    CChildCtrlDimension* m_dimension = nullptr;
};
