#pragma once

#include <memory>

namespace tarn {

/// What drawing keeps of an object from one time to the next: a text laid out, pictures decoded. It belongs to those who
/// draw, and they see whether it still fits; the object only lets it go with itself.
class DrawCache {
public:
    virtual ~DrawCache() = default;
};

using DrawSlot = std::unique_ptr<DrawCache>;

} // namespace tarn
