#pragma once

#include "core/progress.h"
#include "gui_core/look.h"
#include "page_base/bound_page.h"

#include <QHash>
#include <QImage>

class CDXUTControl;
class QComboBox;

namespace tarn {
struct StyleElement;
}

/// The pictures, colours and font that the selected controls have instead of the style's: per element of their type and
/// per state. Shows the current control; what is changed waits for OK, and is written to every selected one of its type.
class CDlgElementCustomize : public CBoundPage {
    Q_OBJECT

public:
    explicit CDlgElementCustomize(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
    void refresh() override;
    tarn::Status write_buffered(const std::function<tarn::Status()>& write) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const tarn::StyleElement* element() const; ///< null when none is chosen
    tarn::VisualState state() const;
    tarn::Part look_part() const;  ///< of the pictures and their colours
    tarn::Part state_part() const; ///< of the texts' colours
    tarn::StatePtr awaited_state(const CDXUTControl& control) const;
    QString picture_name(const CDXUTControl& control) const;
    QImage picture(const QString& name) const;

    void fill_elements(int control_type);
    void show_picture(const CDXUTControl& control);
    void show_picture_name(const QString& name);
    void enable_parts(const CDXUTControl* control);

    void on_choose_picture();
    void choose_picture_file();
    void put_picture(const QString& name);
    tarn::Status take_chosen_files(const tarn::Progress& progress);
    void on_reset_state();
    void on_reset_all();

    QComboBox* m_elements = nullptr;
    QComboBox* m_states = nullptr;
    QByteArray m_look_name;  ///< what the page shows: "Body.hover"; empty without an element
    QByteArray m_state_name; ///< "hover"
    QString m_picture_name;
    int m_listed_type = -1;                ///< whose elements the list shows
    QHash<QString, QImage> m_chosen_files; ///< by path, which stands for the picture's name until it is in the scene
};
