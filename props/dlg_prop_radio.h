#pragma once

#include "state_image_page.h"

/// Caption, state, group, pictures and event scripts of radio buttons.
class CDlgPropRadio : public CStateImagePage {
    Q_OBJECT

public:
    explicit CDlgPropRadio(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
};
