#pragma once

#include <QStackedWidget>

#include <vector>

class CBaseWorld;
class CChildDlg;

/// Windows that share one place; one is shown, and the place is as high as that needs. They are known by an identifier or
/// by their index, in the order in which they were added.
class CWndGroup : public QStackedWidget {
    Q_OBJECT

public:
    explicit CWndGroup(QWidget* parent = nullptr);

    virtual void add_wnd(QWidget* window, int id);
    /// Does nothing when the group has no such window.
    virtual void show_wnd_by_id(int id);
    void show_wnd_by_index(int index);
    /// -1 when no window is shown.
    int shown_id() const;
    QWidget* find_wnd(int id) const;
    /// Moves all windows to fill the rectangle.
    void move_windows(const QRect& rect) { setGeometry(rect); }
    virtual void destroy_all();

private:
    void follow_current();

    std::vector<int> m_ids;
};

/// A group of pages: it hands world and notification codes to all of them, shown or not.
class CDlgGroup : public CWndGroup {
    Q_OBJECT

public:
    using CWndGroup::CWndGroup;

    /// Makes a page of class `Page` from a template and adds it under the template's number.
    template <class Page>
    void create_page(int template_id)
    {
        auto* page = new Page(this);
        page->Create(template_id, this);
        add_wnd(page, template_id);
    }
    void add_wnd(QWidget* window, int id) override;
    void show_wnd_by_id(int id) override;
    void destroy_all() override;
    void update_ui(int code);
    void on_world_created(CBaseWorld* world);

private:
    std::vector<CChildDlg*> m_pages; ///< those of the group's windows that are pages
};
