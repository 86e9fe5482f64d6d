// One text drawn for the first time: a long one of which little shows, beside the same text cut to what a reader could
// see at all.

#include "gui_draw/text_cache.h"

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>

namespace {

constexpr QRectF area(0, 0, 320, 200);
constexpr int readable = 3000;

QString filled_with(const QString& piece, qsizetype size)
{
    return piece.repeated(size / piece.size() + 1).left(size);
}

void draw_text(benchmark::State& state, const QString& text, const tarn::TextLook& look)
{
    QImage image(area.size().toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    for (auto _ : state) {
        tarn::TextCache fresh;
        fresh.draw(painter, area, text, look);
    }
}

struct Kind {
    const char* name;
    QString piece;
};

void register_texts()
{
    const Kind kinds[] = {{"text_words", QStringLiteral("some words ")},
                          {"text_letters", QStringLiteral("letters")},
                          {"text_chinese", QStringLiteral("没有空格的文字")},
                          {"text_arabic", QStringLiteral("\u0627\u0644\u0639\u0631")},
                          {"text_marks", QStringLiteral("a\u0301\u0301\u0301")},
                          {"text_lines", QStringLiteral("line\n")}};
    for (const Kind& kind : kinds)
        for (const int size : {100'000, 1'000'000}) {
            const tarn::TextLook look{.vertical_align = 1, .word_wrap = true};
            const auto add = [&](const char* who, const QString& text) {
                const std::string name = std::string(kind.name) + '/' + who + '/' + std::to_string(size);
                benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
                    draw_text(state, text, look);
                })->Unit(benchmark::kMillisecond);
            };
            add("tarn", filled_with(kind.piece, size));
            add("readable", filled_with(kind.piece, readable));
        }
}

const bool registered = (register_texts(), true);

} // namespace
