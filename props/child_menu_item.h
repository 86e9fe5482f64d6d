#pragma once

#include "gui_core/menu_outline.h"
#include "page_base/bound_page.h"

class CDXUTMenu;
class CDXUTMenuItem;
class CMenuPicture;
class CMenuTree;

/// The items of the current menu: a tree in which they are made, moved and renamed, what belongs to the one that is chosen,
/// and a live picture of the menu.
class CChildMenuItem : public CBoundPage {
    Q_OBJECT

public:
    explicit CChildMenuItem(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;
    void refresh() override;

private:
    CDXUTMenu* menu() const;
    CDXUTMenuItem* item() const;
    void choose(int index);
    void add(tarn::MenuPlace place, bool separator);
    void remove();
    void move(tarn::MenuMove move);
    void drop(int index, tarn::MenuSpot spot);
    void rename(int index, const QString& text);
    void open_function();
    void update_buttons();

    CMenuTree* m_tree = nullptr;
    CMenuPicture* m_picture = nullptr;
};
