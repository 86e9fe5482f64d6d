#pragma once

#include "page_base/bound_page.h"

/// How far a progress bar is and what it shows. It edits the current bar alone.
class CDlgPropProgressBar : public CBoundPage {
    Q_OBJECT

public:
    explicit CDlgPropProgressBar(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
};
