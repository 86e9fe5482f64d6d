#pragma once

#include "page_base/bound_page.h"

class CMyRollup;

/// The current menu: its name, and below it the pages of its items and its look.
class CDlgPropMenu : public CBoundPage {
    Q_OBJECT

public:
    explicit CDlgPropMenu(QWidget* parent = nullptr);

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;

protected:
    void OnInitDialog() override;

private:
    CMyRollup* m_rollup = nullptr;
};
