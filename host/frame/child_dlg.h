#pragma once

#include <QHash>
#include <QWidget>

#include <functional>

class CBaseWorld;
class CButtonST;

namespace tarn {
class Journal;
}

/// A page: a window that is made from a template and whose controls are known by their numbers. Handlers are connected
/// with the on_...() operations; each runs as one user action, so that whatever it changes is one step of undo.
class CChildDlg : public QWidget {
    Q_OBJECT

public:
    explicit CChildDlg(const QString& page_name, QWidget* parent = nullptr);
    ~CChildDlg() override;

    /// Makes the page's controls from template `template_id` as a child of `parent`, then initialises it. False, with a
    /// message to the user, when there is no such template.
    bool Create(int template_id, QWidget* parent);
    /// The page's class name, under which its captions are translated and automation finds it.
    const QString& page_name() const { return m_page_name; }

    /// The template's control with that number; null when there is none.
    QWidget* control(int id) const { return m_controls.value(id); }
    const QHash<int, QWidget*>& controls() const { return m_controls; }
    /// The number in the name of a template control, -1 for other widgets.
    static int control_number(const QWidget* widget);

    // Called by what holds the page
    virtual void OnOK() {}
    virtual void OnCancel() {}
    virtual QSize get_window_standard_size() const { return sizeHint(); }
    virtual bool on_parent_ok() { return true; }
    virtual bool on_parent_cancel() { return true; }
    virtual void on_set_active(bool) {}
    virtual void on_world_created(CBaseWorld* world) { m_world = world; }
    virtual void enable_controls(bool enable) { setEnabled(enable); }
    /// Refreshes the page for a notification code.
    virtual void update_ui(int) {}

protected:
    /// Called once when the template's controls are there.
    virtual void OnInitDialog();
    /// Makes the template's widgets of the page's own classes; null for others.
    virtual QWidget* create_widget(const QString& class_name, QWidget* parent);
    /// Where the page's changes are recorded; null records nothing.
    virtual tarn::Journal* journal() const { return nullptr; }

    CBaseWorld* world() const { return m_world; }
    template <class Widget>
    Widget* control_as(int id) const
    {
        return qobject_cast<Widget*>(control(id));
    }
    CButtonST* button(int id) const;

    /// Runs `handler` as one user action called `name`. Steps with the same `merge_key` become one.
    void run_action(const std::function<void()>& handler, const QString& name = {}, const QByteArray& merge_key = {});
    /// Clicks of a button; the action is called like the button's caption or, without one, its tool tip.
    void on_click(int id, std::function<void()> handler);
    /// A choice in a combo box by the user.
    void on_choose(int id, std::function<void(int)> handler);
    /// Each change of a text by the user; all of one visit to the edit is one step of undo.
    void on_text(int id, std::function<void(const QString&)> handler);
    void on_number(int id, std::function<void(double)> handler);
    /// What is typed from now on is a step of its own.
    void end_typing();

private:
    QByteArray merge_key(int id) const;
    QString m_page_name;
    QHash<int, QWidget*> m_controls;
    CBaseWorld* m_world = nullptr;
};
