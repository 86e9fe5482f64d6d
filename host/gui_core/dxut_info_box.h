#pragma once

#include "dxut_static.h"

/// Lines of text that scroll; new ones come in at the bottom.
class CDXUTInfoBox : public CDXUTStatic {
public:
    using CDXUTStatic::CDXUTStatic;

    const QStringList& lines() const { return state<tarn::InfoBoxState>().lines; }
    /// Appends a line, cut to the type's limit; the oldest goes when there are more than the box keeps.
    void AddString(const QString& text);

    static constexpr double margin = 8; ///< pixels between the panel and the lines
    /// How many lines there is room for.
    int seen_lines() const;
    /// Lines that are scrolled back from the newest.
    int scrolled_back() const { return m_back; }

    bool is_interactive() const override { return true; }
    bool wheel_turned(double steps) override;
    void reset_run_state() override;

private:
    int m_back = 0;
};
