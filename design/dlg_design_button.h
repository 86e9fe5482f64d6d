#pragma once

#include "core/journal.h"
#include "page_base/gui_child_dlg.h"

#include <QMargins>
#include <QString>

#include <optional>

class CElementPicture;
class QFileSystemWatcher;

/// The picture of the current element: the region of the atlas that it is drawn from. It is taken from a file, handed to
/// a picture editor and read back, and its edges are set here.
class CDlgDesignButton : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgDesignButton(QWidget* parent = nullptr);

    void on_world_created(CBaseWorld* world) override;
    /// What the page shows is another element, or looks otherwise.
    void show_element();
    /// Whether a picture was handed to an editor since the page was made.
    bool is_edited() const { return m_edited; }

Q_SIGNALS:
    /// The page changed how the element looks.
    void look_edited();

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;

private:
    bool can_edit() const;
    QString picture_file() const; ///< that of the current element, which editors work on
    void on_change_picture();
    void on_edit_picture();
    void on_refresh_picture();
    void on_edges();
    void set_edges(const QMargins& edges);
    void put_picture(const QImage& picture);
    void redraw();

    CElementPicture* m_preview = nullptr;
    QFileSystemWatcher* m_watcher = nullptr;
    std::optional<tarn::UserAction> m_drag; ///< of a line in the picture; all of it is one step
    bool m_edited = false;
};
