#pragma once

#include "frame/control_bar.h"

class CDlgWorld;

/// The bar "World": holds the list of the objects of the 3D world with their attributes.
class CWorldBar : public CMyControlBar {
    Q_OBJECT

public:
    CWorldBar(const QString& title, QWidget* parent);

    void create_page();

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;

private:
    CDlgWorld* m_page = nullptr;
};
