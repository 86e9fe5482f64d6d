#pragma once

#include "gui_core/dxut_dialog.h"

#include <utility>

namespace tarn {

/// Where places in client areas are on the screen, for many that come dialog by dialog as a rule.
class ScreenRects {
public:
    QRectF of(const CDXUTDialog& home, const QRectF& in_client)
    {
        if (std::exchange(m_home, &home) != &home)
            m_map = home.client_map();
        return m_map.to_screen(in_client);
    }

private:
    const CDXUTDialog* m_home = nullptr;
    ClientMap m_map{};
};

} // namespace tarn
