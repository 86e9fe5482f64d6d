#pragma once

#include "page_base/bound_page.h"

class CMenuPicture;

/// How the current menu looks, with a live picture of it.
class CChildMenuDesign : public CBoundPage {
    Q_OBJECT

public:
    explicit CChildMenuDesign(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;
    void refresh() override;

private:
    CMenuPicture* m_picture = nullptr;
};
