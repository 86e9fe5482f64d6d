#pragma once

#include "gui_core/look.h"
#include "page_base/gui_child_dlg.h"

#include <functional>
#include <vector>

class CDXUTControl;
class QComboBox;

namespace tarn {
struct StyleElement;
}

/// The pictures, colours and font that the selected controls have instead of the style's: per element of their type and
/// per state. Shows the current control; writes to every selected one of its type.
class CDlgElementCustomize : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgElementCustomize(QWidget* parent = nullptr);

    void update_ui(int code) override;

protected:
    void OnInitDialog() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void set_up_pictures();
    void set_up_texts();

    CDXUTControl* current() const; ///< null when there is nothing to edit
    std::vector<CDXUTControl*> targets() const;
    const tarn::StyleElement* element() const; ///< null when none is chosen
    QString look_name() const;                 ///< of the element and state that are chosen; empty without an element
    tarn::VisualState look() const;
    void apply(const std::function<void(CDXUTControl&)>& change);

    void refresh();
    void fill_elements(int control_type);
    void show_picture(const CDXUTControl& control);
    void show_picture_name(const QString& name);
    void show_text(const CDXUTControl& control);
    void show_family(const QString& family);
    void enable_parts(const CDXUTControl* control);

    void on_choose_picture();
    void take_picture_from_file();
    void on_choose_color(int swatch_id, const std::function<void(CDXUTControl&, quint32)>& put);
    void on_reset_state();

    QComboBox* m_elements = nullptr;
    QComboBox* m_states = nullptr;
    QComboBox* m_families = nullptr;
    QString m_picture_name;
    int m_listed_type = -1;    ///< whose elements the list shows
    int m_missing_family = -1; ///< row of a font that is not installed
};
