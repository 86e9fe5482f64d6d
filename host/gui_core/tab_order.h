#pragma once

#include <vector>

class CDXUTControl;
class CDXUTDialog;

namespace tarn {

/// The controls of a dialog that the keyboard reaches now, as Tab goes: those that have a tab_order by it, then the others
/// as one reads, row by row.
std::vector<CDXUTControl*> tab_stops(const CDXUTDialog& dialog);

} // namespace tarn
