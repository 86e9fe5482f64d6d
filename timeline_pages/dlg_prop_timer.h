#pragma once

#include "entered_text.h"
#include "page_base/bound_page.h"

#include <optional>

class CMyRollup;
class CTimebar;

/// The current timebar: its name, its length and how it plays, and below them the pages of its objects and script keys.
class CDlgPropTimer : public CBoundPage {
    Q_OBJECT

public:
    explicit CDlgPropTimer(QWidget* parent = nullptr);

    void on_world_created(CBaseWorld* world) override;
    void update_ui(int code) override;
    void model_changed(const tarn::ModelChange& change) override;

protected:
    void OnInitDialog() override;
    void refresh() override;

private:
    CTimebar* bar() const;
    void ask_length();
    void enter_name();

    CMyRollup* m_rollup = nullptr;
    std::optional<tarn::EnteredText> m_name;
};
