#include "core/authored.h"
#include "core/document.h"
#include "world/world_scene.h"

#include <gtest/gtest.h>

namespace tarn::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class WorldSceneTest : public testing::Test {
protected:
    Document m_document;
    WorldScene m_world{m_document};

    WorldObject* make(WorldType type, const QString& name = {})
    {
        WorldObject* object = m_world.create(type, name);
        m_document.forget_history();
        return object;
    }
    Journal& journal() { return m_document.journal(); }
    QStringList names() const
    {
        QStringList names;
        for (const WorldObject* object : m_world.objects())
            names << object->name();
        return names;
    }
};

TEST_F(WorldSceneTest, NewObjectsAndCopiesGetNamesThatNoOtherHas)
{
    make(WorldType::Camera);
    make(WorldType::Camera);
    WorldObject* tree = make(WorldType::Path, u"Tree 12"_s);
    make(WorldType::Panel, u"Tree 12"_s);
    EXPECT_EQ(names(), (QStringList{u"Camera1"_s, u"Camera2"_s, u"Tree 12"_s, u"Tree 1"_s}));
    const auto copies = m_world.duplicate({tree, m_world.objects().front()});
    ASSERT_EQ(copies.size(), 2u);
    QStringList all = names();
    EXPECT_EQ(all.removeDuplicates(), 0);
    const WorldObject* longest = make(WorldType::Panel, QString(1000, u'x'));
    EXPECT_LE(longest->name().size(), WorldObjectState::max_name);
    EXPECT_LE(make(WorldType::Panel, longest->name())->name().size(), WorldObjectState::max_name);
}

TEST_F(WorldSceneTest, ACopyHasWhatTheFirstOneHasAndGoesItsOwnWay)
{
    WorldObject* path = make(WorldType::Path);
    path->set_points({{1, 2, 3}, {4, 5, 6}});
    path->set_turn({0, 90, 0});
    WorldObject* copy = m_world.duplicate({path}).front();
    EXPECT_EQ(copy->turn(), path->turn());
    EXPECT_EQ(copy->shape().corners(), path->shape().corners());
    copy->set_points({{0, 0, 0}, {0, 0, 9}});
    EXPECT_FLOAT_EQ(copy->shape().length(), 9);
    EXPECT_FLOAT_EQ(path->shape().length(), QVector3D(3, 3, 3).length());
    EXPECT_EQ(copy->parent(), &m_world);
}

TEST_F(WorldSceneTest, UndoTakesBackWhatWasMadeMovedAndRemovedWithTheShapeOfAPath)
{
    WorldObject* path = make(WorldType::Path);
    path->set_points({{0, 0, 0}, {0, 0, 2}});
    EXPECT_FLOAT_EQ(path->shape().length(), 2);
    const quint32 id = path->id();
    m_world.remove({path});
    EXPECT_TRUE(m_world.objects().empty());
    EXPECT_EQ(m_world.find(id), nullptr);
    ASSERT_TRUE(journal().undo());
    EXPECT_EQ(m_world.find(id), path);
    ASSERT_TRUE(journal().undo());
    EXPECT_FLOAT_EQ(path->shape().length(), 0);
    ASSERT_TRUE(journal().redo());
    EXPECT_FLOAT_EQ(path->shape().length(), 2);
    m_world.remove({path, path}); // A list may name an object twice.
    EXPECT_EQ(names().size(), 0);
}

TEST_F(WorldSceneTest, PointsComeFromTheOutsideAsTriplesOfFiniteNumbersAndStayInTheWorld)
{
    WorldObject* path = make(WorldType::Path);
    const FieldBase* points = path->fields().find("points");
    ASSERT_TRUE(points);
    EXPECT_TRUE(path->set_property(*points, NumberList{1, 2, 3, 4e9, 5, 6}));
    EXPECT_EQ(std::get<NumberList>(path->property(*points)), (NumberList{1, 2, 3, 1e6, 5, 6}));
    for (const Value& refused : {Value(NumberList{1, 2}), Value(NumberList{1, 2, qQNaN()}), Value(QString())})
        EXPECT_FALSE(path->set_property(*points, refused));
    NumberList many(3 * (PathState::max_points + 5), 1.0);
    EXPECT_TRUE(path->set_property(*points, many));
    EXPECT_EQ(std::get<NumberList>(path->property(*points)).size(), 3 * PathState::max_points);
}

TEST_F(WorldSceneTest, AnObjectIsTurnedFirstThenPutInItsPlace)
{
    WorldObject* object = make(WorldType::Panel);
    object->set_place({10, 0, 0});
    object->set_turn({0, 90, 0});
    object->set_size({2, 1, 1});
    const QVector3D right = object->transform().map(QVector3D(1, 0, 0));
    EXPECT_LT((right - QVector3D(10, 0, -2)).length(), 1e-4f);
}

} // namespace
} // namespace tarn::test
