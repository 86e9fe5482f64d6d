#include "store/scene_text.h"
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
    const PackagePart part = document.parts().front();
    for (int round = 0; round < 20; ++round) {
        const SceneSnapshot snapshot = document.snapshot();
        const QByteArray expected = part_text(document, part, snapshot);
        QByteArray written;
        std::thread writer([&] { written = part_text(document, part, snapshot); });
        for (int i = 0; i < 50; ++i) {
            CDXUTControl* edited = core().controls()[std::size_t((round * 50 + i) % 300)];
            edited->set_name(u"edited %1"_s.arg(i));
            edited->SetLocation(float(i), float(round));
            if (i % 10 == 0)
                core().remove_control(control(DXUT_CONTROL_SLIDER, core().GetRootDialog(), {}));
        }
        writer.join();
        EXPECT_TRUE(same_text(written, expected));
        EXPECT_FALSE(part_text(document, part, document.snapshot()) == expected);
    }
}
