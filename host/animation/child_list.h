#pragma once

#include "core/document.h"
#include "core/model_object.h"

#include <vector>

namespace tarn {

/// The objects of a list of ids, found anew after the list changed.
template <class Object>
class ChildList {
public:
    void changed() { m_stale = true; }
    const std::vector<Object*>& get(const Document& document, const IdList& ids) const
    {
        if (m_stale) {
            m_stale = false;
            m_objects.clear();
            for (const ObjectRef id : ids)
                m_objects.push_back(static_cast<Object*>(document.find(id.id)));
        }
        return m_objects;
    }

private:
    mutable std::vector<Object*> m_objects;
    mutable bool m_stale = true;
};

} // namespace tarn
