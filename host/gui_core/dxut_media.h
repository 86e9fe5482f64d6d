#pragma once

#include "dxut_control.h"

/// A Flash movie. Movies are not played: a card shows what the movie's header says, or why it cannot be read.
class CDXUTFlash : public CDXUTControl {
public:
    using CDXUTControl::CDXUTControl;

    /// The lines of the card.
    QString description() const;
};

/// A view into the world through another camera; a frame until there is one.
class CDXUTPictureInPicture : public CDXUTControl {
public:
    using CDXUTControl::CDXUTControl;
};

/// A navigation map: a base, the map's picture and a surface over it.
class CDXUTMap : public CDXUTControl {
public:
    using CDXUTControl::CDXUTControl;
};
