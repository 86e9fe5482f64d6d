#pragma once

#include "core/value.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <vector>

namespace tarn {

/// Something that the movies' player said.
struct MovieAnswer {
    enum class Kind {
        Ready,
        Picture, ///< of a movie whose turn is done
        Same,    ///< the turn is done, and the movie looks as before
        Event,
        Done, ///< with the turns of an order; `movie` is the order's number
    };
    Kind kind = Kind::Done;
    quint32 movie = 0;
    QImage picture{};           ///< premultiplied
    QString event{};            ///< its type: "fscommand", "call", "offer", "answer", "failed"
    QString name{};             ///< what was called or offered; of a failure the reason
    std::vector<Value> given{}; ///< arguments, or the answer to a call
    quint32 number = 0;         ///< of the call that is answered
};

/// Cuts what comes from the player into answers. The player has read hostile files: nothing that it says is trusted.
class MovieAnswers {
public:
    static constexpr quint32 largest_side = 4096;      ///< pixels
    static constexpr quint32 most_pixels = 1 << 23;    ///< of a picture
    static constexpr quint32 longest_text = 16 * 1024; ///< bytes of an event

    /// What is whole by now. False when what came is no answer: from then on nothing is.
    bool feed(const QByteArray& bytes, std::vector<MovieAnswer>& answers);

private:
    QByteArray m_waiting;
    bool m_broken = false;
};

} // namespace tarn
