#pragma once

#include "dxut_static.h"

/// A bar that fills up, with a text over it.
class CDXUTProgress : public CDXUTStatic {
public:
    using CDXUTStatic::CDXUTStatic;

    /// What stands over the bar: the message with its placeholders filled in, the percentage, or the caption.
    QString shown_text() const;
};
