#pragma once

#include "commands/input_script.h"

#include <functional>
#include <vector>

class CBaseWorld;

namespace tarn {

/// What a scene that runs tells: the functions that were called, what they printed, their errors and the messages that they
/// showed, as expectations: a function before what it said, which the world's log has the other way round. It forgets the
/// world's log first, and hears messages before whoever shows them.
class ToldByScene {
public:
    explicit ToldByScene(CBaseWorld& world);
    ~ToldByScene();
    ToldByScene(const ToldByScene&) = delete;
    ToldByScene& operator=(const ToldByScene&) = delete;

    /// How much was told until now.
    std::size_t count();
    const InputStep& step(std::size_t place) const { return m_told[place].step; }
    double time(std::size_t place) const { return m_told[place].time; } ///< seconds of the scene's scripts

private:
    void hear();

    struct Told {
        InputStep step;
        double time;
    };

    CBaseWorld& m_world;
    std::function<void(const QString& text, const QString& title)> m_shows_message;
    std::vector<Told> m_told;
    std::size_t m_read = 0;  ///< entries of the log
    std::size_t m_fixed = 0; ///< what was told until here keeps its place
};

} // namespace tarn
