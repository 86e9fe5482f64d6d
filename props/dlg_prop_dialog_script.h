#pragma once

#include "page_base/bound_page.h"

/// The scripts that run when something happens to the current dialog.
class CDlgPropDialogScript : public CBoundPage {
    Q_OBJECT

public:
    explicit CDlgPropDialogScript(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
};
