#include "bench_scene.h"

#include "gui_core/dxut_check_box.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_picture.h"
#include "gui_core/gui_core.h"
#include "gui_scene/gui_plug_scene.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>

#include <array>

namespace bench {

namespace {

constexpr int controls_in_dialog = 50;
constexpr int picture_count = 8;
constexpr std::array types{DXUT_CONTROL_BUTTON,   DXUT_CONTROL_STATIC,  DXUT_CONTROL_BUTTON, DXUT_CONTROL_CHECKBOX,
                           DXUT_CONTROL_STATIC,   DXUT_CONTROL_PICTURE, DXUT_CONTROL_BUTTON, DXUT_CONTROL_STATIC,
                           DXUT_CONTROL_CHECKBOX, DXUT_CONTROL_BUTTON};

QString picture_name(int number)
{
    return QStringLiteral("picture%1.png").arg(number % picture_count);
}

QByteArray encoded_picture(int number)
{
    QImage image(32, 32, QImage::Format_ARGB32);
    image.fill(QColor::fromHsv(number * 360 / picture_count, 200, 200));
    QBuffer buffer;
    image.save(&buffer, "png");
    return buffer.data();
}

void set(tarn::ModelObject& object, const char* field, const tarn::Value& value)
{
    (void)object.set_property(*object.fields().find(field), value);
}

void fill_control(CDXUTControl& control, int number)
{
    static const std::array words{QStringLiteral("Start"), QStringLiteral("确定"), QStringLiteral("Next page"),
                                  QStringLiteral("Volume"), QStringLiteral("返回")};
    const QString& word = words[std::size_t(number) % words.size()];
    set(control, "text", QStringLiteral("%1 %2").arg(word).arg(number));
    if (number % 3 == 0)
        set(control, "color_tag", qint64(0xff000000u | quint32(number)));
    if (number % 4 == 0)
        set(control, "font_size", qint64(10 + number % 20));
    if (number % 8 == 0)
        control.set_align_type(1 + number / 8 % 8);
    if (number % 11 == 0)
        set(control, "bold", true);
    if (number % 13 == 0)
        control.SetVisible(false);
    if (auto* box = dynamic_cast<CDXUTCheckBox*>(&control))
        box->SetChecked(number % 2 == 0);
    if (control.GetType() == DXUT_CONTROL_PICTURE)
        set(control, "image", picture_name(number));
}

const QTemporaryDir& folder()
{
    // In memory where that can be had, so that the disk's moods are not measured.
    static const bool in_memory = QFileInfo(QStringLiteral("/dev/shm")).isWritable();
    static const QTemporaryDir dir(in_memory ? QStringLiteral("/dev/shm/tarn-bench") : QStringLiteral("tarn-bench"));
    return dir;
}

} // namespace

void fill_scene(CGuiCore& core, int count)
{
    for (int i = 0; i < picture_count; ++i)
        core.set_texture(picture_name(i), encoded_picture(i));
    CDXUTDialog* dialog = nullptr;
    for (int i = 0; i < count; ++i) {
        const int place = i % controls_in_dialog;
        if (place == 0)
            dialog = core.create_dialog(QRect(i % 701, i % 407, 640, 480));
        const QRectF rect(10.5 + place % 5 * 120, 8 + place / 5 * 44 + i % 7, 100 + i % 17, 24 + i % 9);
        fill_control(*core.create_control(types[std::size_t(i) % types.size()], dialog, rect), i);
    }
}

QString package_path(int count)
{
    const QString path = folder().filePath(QStringLiteral("%1.pak").arg(count));
    if (QFileInfo::exists(path))
        return path;
    bench::WorldScene in_world;
    CGuiPlugScene& scene = in_world.scene;
    const tarn::RecordingOff off(scene.journal());
    fill_scene(scene.gui_core(), count);
    if (!scene.save_scene(path))
        return {};
    return path;
}

QString output_path()
{
    return folder().filePath(QStringLiteral("output.pak"));
}

void cool_caches(benchmark::State& state)
{
    constexpr std::size_t more_than_any_cache = 96 * 1024 * 1024;
    constexpr std::size_t cache_line = 64;
    state.PauseTiming();
    static std::vector<char> other_work(more_than_any_cache);
    for (std::size_t i = 0; i < other_work.size(); i += cache_line)
        ++other_work[i];
    benchmark::DoNotOptimize(other_work.data());
    state.ResumeTiming();
}

std::vector<CDXUTControl*> controls_of(CGuiPlugScene& scene)
{
    return scene.gui_core().controls();
}

} // namespace bench
