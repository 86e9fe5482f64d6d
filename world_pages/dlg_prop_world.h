#pragma once

#include "page_base/bound_page.h"

class CDlgGroup;

/// The attributes of the selected objects of the 3D world, and below them those that only the type of the last one has.
class CDlgPropWorld : public CBoundPage {
    Q_OBJECT

public:
    explicit CDlgPropWorld(QWidget* parent = nullptr);

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;

protected:
    void OnInitDialog() override;
    void refresh() override;

private:
    void choose_page();

    CDlgGroup* m_pages = nullptr;
};
