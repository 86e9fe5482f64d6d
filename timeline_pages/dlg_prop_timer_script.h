#pragma once

#include "page_base/bound_page.h"

#include <optional>

class CReportListTimerScript;
class CTimebar;

namespace tarn {
class CScriptKey;
}

/// The script keys of the current timebar.
class CDlgPropTimerScript : public CBoundPage {
    Q_OBJECT

public:
    explicit CDlgPropTimerScript(QWidget* parent = nullptr);

    void model_changed(const tarn::ModelChange& change) override;

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;
    void refresh() override;

private:
    CTimebar* bar() const;
    const tarn::CScriptKey* selected_key() const;
    std::optional<float> ask_time(CTimebar& bar, const QString& prompt);
    void choose_key();
    void add_key();
    void edit_key();
    void remove_key(float time);
    void move_key();
    void open_script(float time);
    void enable_buttons();

    CReportListTimerScript* m_list = nullptr;
    float m_key_time = 0; ///< of the key that was chosen or made last, by which it is found after a refresh
};
