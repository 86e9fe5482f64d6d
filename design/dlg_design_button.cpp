#include "dlg_design_button.h"

#include "core/appinfo.h"
#include "core/journal.h"
#include "core/language.h"
#include "element_picture.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/filedlg.h"
#include "frame/str_input.h"
#include "gui_core/gui_core.h"
#include "gui_core/skin_sheet.h"
#include "gui_core/style_state.h"
#include "gui_draw/texture_cache.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/picture_file.h"
#include "store/atomic_file.h"
#include "store/filefun.h"
#include "store/inifile.h"
#include "widgets/button_st.h"

#include <QBuffer>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QStandardPaths>
#include <QTimer>

#include <algorithm>

using tarn::lang;
using tarn::LookPart;

namespace {

enum Id : int { id_preview = 6434, id_change = 6438, id_edit = 6440, id_refresh = 6441, id_edges = 6444 };

constexpr int longest_widths = 300;
constexpr int maximised = 3;
constexpr int settle_time = 200; ///< milliseconds in which an editor finishes writing

/// The first editor of the host's preset file that there is; a bare name is looked for on the path.
QString picture_editor()
{
    const QStringList editors = inifile::get_str_list_from_ini(appinfo::get_preset_ini(),
                                                               QStringLiteral("img_editors"));
    for (const QString& editor : editors) {
        if (filefun::file_exist(editor))
            return editor;
        if (editor.isEmpty() || editor.contains(QLatin1Char('/')))
            continue;
        if (const QString found = QStandardPaths::findExecutable(editor); !found.isEmpty())
            return found;
    }
    return {};
}

/// As far as the text goes on with numbers and slashes between them, they take the place of the present ones.
QMargins scanned_widths(const QString& text, const QMargins& present)
{
    int widths[] = {present.left(), present.top(), present.right(), present.bottom()};
    const QStringList parts = text.split(QLatin1Char('/'));
    for (int i = 0; i < std::min(4, int(parts.size())); ++i) {
        bool ok = false;
        const int width = parts[i].trimmed().toInt(&ok);
        if (!ok)
            break;
        widths[i] = width;
    }
    return {widths[0], widths[1], widths[2], widths[3]};
}

bool fits(const QMargins& edges, const QSize& room)
{
    const auto has_room = [](qint64 near_edge, qint64 far_edge, int length) {
        return near_edge >= 0 && far_edge >= 0 && near_edge + far_edge <= length;
    };
    return has_room(edges.left(), edges.right(), room.width()) && has_room(edges.top(), edges.bottom(), room.height());
}

/// Whether something of the picture lies between the edges.
bool has_middle(const QMargins& edges, const QSize& room)
{
    return edges.left() + edges.right() < room.width() && edges.top() + edges.bottom() < room.height();
}

/// The edges made narrower, each in its share, so that a third of the picture lies between them.
QMargins fitted(const QMargins& edges, const QSize& room)
{
    const auto ends = [](int near_edge, int far_edge, int length) {
        const qint64 sum = qint64(near_edge) + far_edge;
        if (sum < length)
            return std::pair(near_edge, far_edge);
        const qint64 left_to_them = length * 2 / 3;
        return std::pair(int(near_edge * left_to_them / sum), int(far_edge * left_to_them / sum));
    };
    const auto [left, right] = ends(edges.left(), edges.right(), room.width());
    const auto [top, bottom] = ends(edges.top(), edges.bottom(), room.height());
    return {left, top, right, bottom};
}

/// With straight alpha, as an atlas has it; nothing is lost.
tarn::Result<QImage> read_picture(const QString& path)
{
    const auto encoded = tarn::read_picture_file(path);
    if (!encoded)
        return encoded.status();
    // It is looked at as every picture of a scene is, before all of it is unpacked.
    if (tarn::TextureCache().image(path, encoded.value()).isNull())
        return tarn::load_picture(path).status();
    return QImage::fromData(encoded.value()).convertToFormat(QImage::Format_ARGB32);
}

QImage scaled_to(const QImage& picture, QSize size)
{
    return picture.size() == size ? picture
                                  : picture.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                                        .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                                        .convertToFormat(QImage::Format_ARGB32);
}

} // namespace

CDlgDesignButton::CDlgDesignButton(QWidget* parent) : CGuiChildDlg(QStringLiteral("CDlgDesignButton"), parent) {}

QWidget* CDlgDesignButton::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name != QLatin1String("CElementPicture"))
        return nullptr;
    m_preview = new CElementPicture(parent);
    return m_preview;
}

void CDlgDesignButton::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    on_click(id_change, [this] { on_change_picture(); });
    on_click(id_edit, [this] { on_edit_picture(); });
    on_click(id_refresh, [this] { on_refresh_picture(); });
    on_click(id_edges, [this] { on_edges(); });
    connect(m_preview, &CElementPicture::edges_dragged, this, [this](const QMargins& edges) {
        if (!can_edit())
            return;
        if (!m_drag)
            m_drag.emplace(*journal(), lang(u"边界设置", u"Edges"));
        set_edges(edges);
    });
    connect(m_preview, &CElementPicture::drag_ended, this, [this] { m_drag.reset(); });
    m_watcher = new QFileSystemWatcher(this);
    auto* settled = new QTimer(this);
    settled->setSingleShot(true);
    settled->setInterval(settle_time);
    connect(m_watcher, &QFileSystemWatcher::fileChanged, settled, qOverload<>(&QTimer::start));
    connect(settled, &QTimer::timeout, this, [this] {
        // An editor may have put another file in the place of the one that was watched.
        if (const QString file = picture_file(); m_edited && filefun::file_exist(file))
            m_watcher->addPath(file);
        run_action([this] { on_refresh_picture(); }, lang(u"刷新图片", u"Refresh Picture"));
    });
}

void CDlgDesignButton::on_world_created(CBaseWorld* world)
{
    CGuiChildDlg::on_world_created(world);
    if (core())
        show_element();
}

bool CDlgDesignButton::can_edit() const
{
    return core() && is_editing() && core()->current_element().owner >= 0;
}

void CDlgDesignButton::show_element()
{
    const LookPart part = core()->current_element();
    const tarn::LookOwner* owner = tarn::look_owner(part.owner);
    const tarn::StyleElement* element = owner ? tarn::element_part(*owner, part.part) : nullptr;
    const bool is_icon = element && tarn::sheet_picture(element->element, part.state).icon;
    m_preview->show_picture(core()->texture(part), core()->edge_widths(part), is_icon);
    for (const int id : {id_edit, id_refresh, id_edges})
        control(id)->setEnabled(element && (id != id_edges || !is_icon));
}

void CDlgDesignButton::redraw()
{
    show_element();
    update_all_views();
    Q_EMIT look_edited();
}

void CDlgDesignButton::on_change_picture()
{
    if (!can_edit())
        return;
    const LookPart part = core()->current_element();
    const QRect room = core()->default_rect(part);
    if (room.isEmpty()) {
        tarn::boxes::error(this, lang(u"该元素无贴图可以设置!", u"This element has no texture!"));
        return;
    }
    const QString path = filedlg::pop_open_dlg_img(window());
    if (path.isEmpty())
        return;
    const auto loaded = read_picture(path);
    if (!loaded)
        return tarn::boxes::error(this, loaded.status().message());
    const QImage& picture = loaded.value();
    // A smaller picture shrinks the region; a larger one is scaled into all of it.
    QSize size = picture.size();
    if (size.width() > room.width() || size.height() > room.height()) {
        tarn::boxes::message(
            this,
            {.text = lang(u"警告：贴图尺寸超过限定尺寸，图片将会被压缩保存！",
                          u"Warning:Size of selected image larger than limit size,image will be compress!"),
             .title = {}});
        size = room.size();
    }
    put_picture(scaled_to(picture, size));
}

void CDlgDesignButton::put_picture(const QImage& picture)
{
    const LookPart part = core()->current_element();
    core()->set_element_texture(part, picture);
    const QSize size = core()->texture_rect(part).size();
    if (const QMargins edges = core()->edge_widths(part); !has_middle(edges, size))
        core()->set_edge_widths(part, fitted(edges, size));
    scene()->update_all_ctrl_element();
    redraw();
}

QString CDlgDesignButton::picture_file() const
{
    const LookPart part = core()->current_element();
    const tarn::LookOwner* owner = tarn::look_owner(part.owner);
    if (!owner)
        return {};
    const QString& package = scene()->openfile_name();
    const QString folder = package.isEmpty() ? appinfo::get_user_path(QStringLiteral("guitemp"))
                                             : QFileInfo(package).absolutePath() + QStringLiteral("/guitemp");
    return folder + QLatin1Char('/') + tarn::part_name(*owner, part.part, part.state) + QStringLiteral(".png");
}

void CDlgDesignButton::on_edit_picture()
{
    if (!can_edit() || core()->texture_rect(core()->current_element()).isEmpty())
        return;
    const QString file = picture_file();
    QByteArray png;
    QBuffer buffer(&png);
    core()->texture(core()->current_element()).save(&buffer, "PNG");
    filefun::create_path(QFileInfo(file).path());
    if (const auto status = tarn::write_file_atomically(file, png); !status)
        return tarn::boxes::error(this, status.message());
    m_edited = true;
    m_watcher->addPath(file);
    const QString editor = picture_editor();
    if (editor.isEmpty())
        tarn::boxes::error(this,
                           lang(u"没有设置默认图片编辑器，请在模型的贴图编辑器中设置图片编辑器！",
                                u"You didn't set the default image editor,Please setup default model texture "
                                u"editor."));
    else
        filefun::shell_open_file(editor, file, maximised);
}

/// A file that holds no picture, or none at all, leaves everything as it is.
void CDlgDesignButton::on_refresh_picture()
{
    if (!can_edit())
        return;
    const LookPart part = core()->current_element();
    const QRect region = core()->texture_rect(part);
    if (region.isEmpty())
        return;
    const auto loaded = read_picture(picture_file());
    if (!loaded)
        return;
    const QImage picture = scaled_to(loaded.value(), region.size());
    if (picture != core()->texture(part))
        put_picture(picture);
}

void CDlgDesignButton::on_edges()
{
    if (!can_edit())
        return;
    const LookPart part = core()->current_element();
    const QSize size = core()->texture_rect(part).size();
    const QMargins present = core()->edge_widths(part);
    QString text;
    if (!PopDlgStrInput(this,
                        lang(u"输入边框宽度(左/上/右/下),", u"Edge width(L/T/R/B)")
                            + QStringLiteral("w=%1;h=%2").arg(size.width()).arg(size.height()),
                        {}, tarn::edges_text(present), text, longest_widths))
        return;
    const QMargins edges = scanned_widths(text, present);
    if (!fits(edges, size))
        return tarn::boxes::error(
            this, lang(u"边界值的总和超出了矩形区域，设定无效!", u"Edge size is large than rectangle size!"));
    set_edges(edges);
}

void CDlgDesignButton::set_edges(const QMargins& edges)
{
    if (!can_edit() || edges == core()->edge_widths(core()->current_element()))
        return;
    core()->set_edge_widths(core()->current_element(), edges);
    scene()->update_all_ctrl_element();
    redraw();
}
