#pragma once

#include "state_image_page.h"

/// Caption, state, pictures and event scripts of check boxes.
class CDlgPropCheck : public CStateImagePage {
    Q_OBJECT

public:
    explicit CDlgPropCheck(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
};
