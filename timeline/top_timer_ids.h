#pragma once

/// Numbers of the controls of CDlgTopTimer's template.
namespace tarn::top_timer {

enum Id : int {
    id_bars = 6157,
    id_targets = 6158,
    id_variables = 6156,
    id_scroll = 6169,
    id_lock = 6200,
    id_play = 6468,
    id_record = 6487,
    id_auto_record = 6880,
    id_previous = 6479,
    id_next = 6495,
    id_zoom_in = 6170,
    id_zoom_out = 6171,
    id_release = 6575,
    id_center = 6579,
    id_speed = 6881,
    id_loop = 6882,
    id_table = 6883,
    // Of the template, and never shown
    id_hidden_step = 6597,
    id_hidden_previous = 6473,
    id_hidden_next = 6490,
};

// Numbers in the icon table
constexpr int icon_play = 15;
constexpr int icon_stop = 16;

} // namespace tarn::top_timer
