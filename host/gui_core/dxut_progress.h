#pragma once

#include "dxut_static.h"

/// A bar that fills up, with a text over it.
class CDXUTProgress : public CDXUTStatic {
public:
    CDXUTProgress(tarn::Journal& journal, CGuiCore& core);

    float GetPersent() const { return state<tarn::ProgressState>().percent; }
    /// Held to 0 .. 100.
    bool SetPersent(float percent);
    int GetTotalNum() const { return state<tarn::ProgressState>().total; }
    bool SetTotalNum(int total);
    int GetBorder() const { return state<tarn::ProgressState>().border; }
    bool SetBorder(int pixels);
    bool SetShowMessage(const QString& format);

    /// What stands over the bar: the message with its placeholders filled in, the percentage, or the caption.
    QString shown_text() const;
};
