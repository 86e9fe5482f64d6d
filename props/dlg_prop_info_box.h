#pragma once

#include "page_base/bound_page.h"

/// The lines of info boxes.
class CPropDlgInfoBox : public CBoundPage {
    Q_OBJECT

public:
    explicit CPropDlgInfoBox(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
};
