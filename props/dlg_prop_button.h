#pragma once

#include "page_base/bound_page.h"

/// Caption and event scripts of plain buttons.
class CDlgPropButton : public CBoundPage {
    Q_OBJECT

public:
    explicit CDlgPropButton(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
};
