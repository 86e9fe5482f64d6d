#pragma once

#include "dxut_control.h"

/// A Flash movie. Movies are not played: a card shows what the movie's header says, or why it cannot be read.
class CDXUTFlash : public CDXUTControl {
public:
    CDXUTFlash(tarn::Journal& journal, CGuiCore& core);

    /// The lines of the card.
    QString description() const;
};

/// A view into the world through another camera; a frame until there is one.
class CDXUTPictureInPicture : public CDXUTControl {
public:
    CDXUTPictureInPicture(tarn::Journal& journal, CGuiCore& core);
};

/// A navigation map: a base, the map's picture and a surface over it.
class CDXUTMap : public CDXUTControl {
public:
    CDXUTMap(tarn::Journal& journal, CGuiCore& core);
};
