#include "movies/movie_answers.h"

#include <QRandomGenerator>
#include <QtEndian>

#include <gtest/gtest.h>

using namespace tarn;
using namespace Qt::StringLiterals;

namespace {

QByteArray head(quint32 kind, quint32 movie, quint32 width = 0, quint32 height = 0)
{
    QByteArray bytes;
    for (const quint32 number : {kind, movie, width, height}) {
        const quint32 little = qToLittleEndian(number);
        bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
    }
    return bytes;
}

QByteArray event(const QByteArray& json)
{
    return head(4, 1, quint32(json.size())) + json;
}

std::vector<MovieAnswer> read(const QByteArray& bytes, bool fine = true)
{
    MovieAnswers reader;
    std::vector<MovieAnswer> answers;
    EXPECT_EQ(reader.feed(bytes, answers), fine);
    return answers;
}

} // namespace

TEST(MovieAnswers, are_cut_out_of_a_stream_that_comes_in_any_pieces)
{
    const QByteArray stream = head(1, 0, 2) + "{}" + head(2, 3, 2, 1) + QByteArray("\xff\0\0\xff\0\0\x80\x80", 8)
        + head(3, 4) + event(R"({"type":"call","name":"n","given":["t",2,0.5,true,null]})") + head(5, 9);
    for (const qsizetype step : {1, 3, 16, 17, 1000}) {
        MovieAnswers reader;
        std::vector<MovieAnswer> answers;
        for (qsizetype at = 0; at < stream.size(); at += step)
            ASSERT_TRUE(reader.feed(stream.mid(at, step), answers));
        ASSERT_EQ(answers.size(), 5U);
        EXPECT_EQ(answers[1].picture.pixel(0, 0), qRgba(255, 0, 0, 255));
        EXPECT_EQ(answers[1].picture.pixelColor(1, 0).alpha(), 0x80);
        EXPECT_EQ(answers[3].name, u"n"_s);
        EXPECT_EQ(answers[3].given, (std::vector<Value>{u"t"_s, qint64(2), 0.5, true, Value()}));
        EXPECT_EQ(answers[4].movie, 9U);
    }
}

TEST(MovieAnswers, that_cannot_be_end_the_stream)
{
    const quint32 side = MovieAnswers::largest_side;
    for (const QByteArray& bytes : {head(0, 1), head(6, 1), head(2, 1, 0, 5), head(2, 1, side + 1, 1),
                                    head(2, 1, side, side), head(2, 1, 0xffffffff, 0xffffffff),
                                    head(4, 1, MovieAnswers::longest_text + 1), event("[]"), event("{\"type\":")}) {
        MovieAnswers reader;
        std::vector<MovieAnswer> answers;
        EXPECT_FALSE(reader.feed(bytes, answers));
        answers.clear();
        EXPECT_FALSE(reader.feed(head(3, 1), answers));
        EXPECT_TRUE(answers.empty());
    }
    EXPECT_LE(read(event(R"({"type":"call","name":")" + QByteArray(5000, 'n') + R"(","given":7})")).front().name.size(),
              1000);
}

TEST(MovieAnswers, of_noise_are_survived)
{
    QRandomGenerator random(5);
    for (int round = 0; round < 2000; ++round) {
        QByteArray bytes = head(random.bounded(7), random.bounded(3), random.bounded(40), random.bounded(40));
        for (int i = random.bounded(200); i > 0; --i)
            bytes += char(random.bounded(256));
        MovieAnswers reader;
        std::vector<MovieAnswer> answers;
        (void)reader.feed(bytes, answers);
        for (const MovieAnswer& answer : answers)
            EXPECT_EQ(answer.kind == MovieAnswer::Kind::Picture, !answer.picture.isNull());
    }
}
