#pragma once

#include <QByteArray>
#include <QRectF>
#include <QString>

#include <gtest/gtest.h>

#include <ostream>

// How failed expectations show Qt's values. googletest finds these by the values' own namespace.
void PrintTo(const QString& text, std::ostream* out);
void PrintTo(const QByteArray& bytes, std::ostream* out);
void PrintTo(const QRect& rect, std::ostream* out);
void PrintTo(const QRectF& rect, std::ostream* out);
void PrintTo(const QSize& size, std::ostream* out);
void PrintTo(const QPointF& point, std::ostream* out);

namespace tarn::test {

/// Two long texts compared: a failure shows only the first line in which they differ.
testing::AssertionResult same_text(const QByteArray& a, const QByteArray& b);

} // namespace tarn::test
