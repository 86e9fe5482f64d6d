#pragma once

#include <Qt>

namespace tarn {

class TimelineHost;

/// Whether the timeline does something with the key.
bool takes_key(int key, Qt::KeyboardModifiers modifiers);
/// Does it; false when there is nothing.
bool press_key(TimelineHost& host, int key, Qt::KeyboardModifiers modifiers);

} // namespace tarn
