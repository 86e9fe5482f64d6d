#pragma once

#include "page_base/bound_page.h"

/// The text of static texts and how it stands in its area.
class CDlgPropStatic : public CBoundPage {
    Q_OBJECT

public:
    explicit CDlgPropStatic(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
};
