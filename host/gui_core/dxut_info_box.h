#pragma once

#include "dxut_static.h"

#include <vector>

/// Lines of text that scroll; new ones come in at the bottom.
class CDXUTInfoBox : public CDXUTStatic {
public:
    CDXUTInfoBox(tarn::Journal& journal, CGuiCore& core);

    const QStringList& lines() const { return state<tarn::InfoBoxState>().lines; }
    /// Appends a line, cut to the type's limit; the oldest goes when there are more than the box keeps.
    void AddString(const QString& text);

    void draw(tarn::DrawContext& context, const QRectF& area) const override;
    bool is_interactive() const override { return true; }
    bool wheel_turned(double steps) override;
    void reset_run_state() override;
    void state_changed() override;

private:
    int seen_lines() const;

    int m_back = 0; ///< lines that are scrolled back from the newest
    mutable std::vector<tarn::TextCache> m_texts;
};
