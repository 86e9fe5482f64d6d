#pragma once

#include "state_image_page.h"

/// Caption, pictures, annotation and event scripts of image buttons.
class CDlgPropButtonST : public CStateImagePage {
    Q_OBJECT

public:
    explicit CDlgPropButtonST(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
};
