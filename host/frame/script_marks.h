#pragma once

namespace tarn {

// The numbers by which the editor of scripts knows its margins and marks.

enum ScriptMargin : int { number_margin, mark_margin, fold_margin };

constexpr int fault_marker = 1;
constexpr int fault_indicator = 8; ///< those below are the lexer's
constexpr int place_indicator = 9;

} // namespace tarn
