#pragma once

#include <QByteArray>

namespace tarn {

/// What a movie's tags say that it has and the player lacks.
struct MovieLacks {
    bool filters = false; ///< blur, shadow and their like
    bool bitmaps = false; ///< scripts draw clips into bitmaps
    bool sound = false;
    bool video = false;
    bool packing = false; ///< it is packed in a way that cannot be looked into
};

/// Goes through the tags of a movie; of a damaged one through those before the damage.
MovieLacks read_movie_tags(const QByteArray& file);

} // namespace tarn
