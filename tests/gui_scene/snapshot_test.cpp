#include "support/scene_fixture.h"

#include <thread>

using namespace tarn;
using namespace tarn::test;

using SnapshotTest = SceneTest;

TEST_F(SnapshotTest, written_in_a_thread_while_edits_go_on_it_is_the_scene_at_that_moment)
{
    read_sample(u"tiny"_s);
    for (int i = 0; i < 300; ++i)
        control(DXUT_CONTROL_BUTTON, core().GetDialogs().first(), QRectF(i, i, 50, 20));
    Document& document = m_world.document();
    ASSERT_TRUE(m_scene.functions().set_function(u"f"_s, u"return 0"_s));
    for (int round = 0; round < 20; ++round) {
        const SceneSnapshot snapshot = document.snapshot();
        const auto expected = package_texts(document, snapshot);
        auto written = expected;
        written.clear();
        std::thread writer([&] { written = package_texts(document, snapshot); });
        for (int i = 0; i < 50; ++i) {
            CDXUTControl* edited = core().controls()[std::size_t((round * 50 + i) % 300)];
            edited->set_name(u"edited %1"_s.arg(i));
            edited->SetLocation(float(i), float(round));
            (void)m_scene.functions().set_function(u"f"_s, u"return %1"_s.arg(i));
            if (i % 10 == 0)
                core().remove_control(control(DXUT_CONTROL_SLIDER, core().GetRootDialog(), {}));
        }
        writer.join();
        EXPECT_EQ(written, expected);
        EXPECT_NE(package_texts(document, document.snapshot()), expected);
    }
}
