#pragma once

#include "attributes.h"
#include "core/journal.h"
#include "gui_core/dxut_button.h"
#include "gui_core/dxut_check_box.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_picture.h"
#include "gui_core/gui_core.h"
#include "printing.h"

#include <QBuffer>
#include <QColor>
#include <QImage>

#include <gtest/gtest.h>

namespace tarn::test {

using namespace Qt::StringLiterals;

/// An encoded picture of one colour.
inline QByteArray png(QColor color, QSize size = {8, 8})
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

/// An interface of its own, without a scene.
class GuiTest : public testing::Test {
protected:
    CDXUTDialog* dialog(const QRect& rect) { return m_core.create_dialog(rect); }
    template <class Control>
    Control* control(CDXUTDialog* dialog, int type, const QRectF& rect)
    {
        return static_cast<Control*>(m_core.create_control(type, dialog, rect));
    }
    CDXUTButton* button(CDXUTDialog* home, const QRectF& rect)
    {
        return control<CDXUTButton>(home, DXUT_CONTROL_BUTTON, rect);
    }
    CDXUTCheckBox* check_box(CDXUTDialog* home, const QRectF& rect)
    {
        return control<CDXUTCheckBox>(home, DXUT_CONTROL_CHECKBOX, rect);
    }

    Document m_document;
    Journal& m_journal = m_document.journal();
    CGuiCore m_core{m_document};
};

} // namespace tarn::test
