#include "printing.h"

#include <QList>

void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

void PrintTo(const QByteArray& bytes, std::ostream* out)
{
    *out << bytes.size() << " bytes \"" << bytes.left(400).toStdString() << '"';
}

void PrintTo(const QRect& rect, std::ostream* out)
{
    PrintTo(QRectF(rect), out);
}

void PrintTo(const QRectF& rect, std::ostream* out)
{
    *out << '(' << rect.x() << ", " << rect.y() << "; " << rect.width() << " x " << rect.height() << ')';
}

void PrintTo(const QSize& size, std::ostream* out)
{
    *out << size.width() << " x " << size.height();
}

void PrintTo(const QPointF& point, std::ostream* out)
{
    *out << '(' << point.x() << ", " << point.y() << ')';
}

namespace tarn::test {

testing::AssertionResult same_text(const QByteArray& a, const QByteArray& b)
{
    if (a == b)
        return testing::AssertionSuccess();
    const auto lines_a = a.split('\n');
    const auto lines_b = b.split('\n');
    qsizetype line = 0;
    while (line < lines_a.size() && line < lines_b.size() && lines_a[line] == lines_b[line])
        ++line;
    return testing::AssertionFailure() << "line " << line + 1 << " differs:\n  " << lines_a.value(line).toStdString()
                                       << "\n  " << lines_b.value(line).toStdString();
}

} // namespace tarn::test
