#pragma once

#include "value.h"

#include <QByteArray>

namespace tarn {

/// A value that was read and did not keep to its field's rules, so that it was held to them.
struct HeldValue {
    quint32 object = 0; ///< id of the object; 0 is the interface as a whole
    QByteArray field;
    Value given;
    Value kept;
};

} // namespace tarn
