#pragma once

#include <cstddef>

namespace tarn {

/// What a scene's scripts may use. A call is one ScriptRuntime::call() with all that runs inside it.
struct ScriptLimits {
    std::size_t memory = 32 * 1024 * 1024; ///< bytes of all scripts of a runtime together
    std::size_t text = 1024 * 1024;        ///< bytes of one text
    std::size_t block = 4 * 1024 * 1024;   ///< bytes of one table's part or one call stack
    long long steps = 5'000'000;           ///< instructions of a call; work inside library functions counts too
    double processor_seconds = 0.03;       ///< of a call; guards where steps are slow
    double compile_seconds = 0.03;         ///< processor time to compile one function
    int call_depth = 50;                   ///< functions of the scene that call each other
    std::size_t suspended = 1000;          ///< calls that wait at one time
    double wait_seconds = 24 * 60 * 60;    ///< the longest wait
};

} // namespace tarn
