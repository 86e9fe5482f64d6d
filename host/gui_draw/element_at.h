#pragma once

#include <QPointF>

#include <optional>

class CDXUTControl;
class CDXUTDialog;
class CGuiCore;

namespace tarn {

struct LookPart;

/// The part of a look that is drawn topmost at `place`, pixels of the screen, of what the dialog or one of its controls
/// is drawn from; where no element is, that of its text. None where neither is.
std::optional<LookPart> element_at(const CGuiCore& core, const CDXUTDialog& dialog, QPointF place);
std::optional<LookPart> element_at(const CGuiCore& core, const CDXUTControl& control, QPointF place);

} // namespace tarn
