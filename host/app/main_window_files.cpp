// The main window's files.

#include "core/language.h"
#include "engine/scene_editor.h"
#include "engine/scene_plug.h"
#include "frame/boxes.h"
#include "frame/filedlg.h"
#include "main_window.h"
#include "replay/recording_menu.h"
#include "store/atomic_file.h"
#include "store/filefun.h"
#include "studio.h"
#include "view/view3d.h"

#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QImageReader>
#include <QLocale>
#include <QMimeData>
#include <QUrl>

using tarn::lang;
using tarn::boxes::Button;

namespace {

QString file_filter()
{
    return lang(u"TARN文件", u"TARN file") + QStringLiteral("(*.tarn)|*.tarn|") + lang(u"所有文件", u"All files")
        + QStringLiteral("(*.*)|*.*||");
}

bool is_package(const QString& path)
{
    return path.endsWith(QLatin1String(".tarn"), Qt::CaseInsensitive);
}

filter_man filter()
{
    filter_man filter;
    filter.add_filter(file_filter(), {});
    return filter;
}

} // namespace

bool MainWindow::report(const tarn::Status& status)
{
    if (!status)
        tarn::boxes::error(this, status.message());
    return status.ok();
}

bool MainWindow::new_file()
{
    m_view->finish_text();
    return report(m_studio.new_file());
}

bool MainWindow::open_file(const QString& path)
{
    m_view->finish_text();
    const auto holder = m_studio.other_holder(path);
    if (holder && !opens_copy(path, *holder))
        return false;
    return report(m_studio.open_file(path, holder.has_value()));
}

bool MainWindow::opens_copy(const QString& path, const tarn::FileHolder& holder)
{
    const QString text
        = lang(u"“%1”已在另一个 Tarn studio 中打开（%3 上的进程 %2）。要打开一份副本吗？副本需另存为其他文件。",
               u"\"%1\" is open in another Tarn studio (process %2 on %3). Open a copy of it? The copy is to "
               u"be saved under another name.")
              .arg(filefun::get_pure_filename(path, 1), QString::number(holder.process), holder.computer);
    return tarn::boxes::message(this,
                                {.text = text,
                                 .title = {},
                                 .buttons = {Button::Ok, Button::Cancel},
                                 .captions = {lang(u"打开副本", u"Open a Copy"), {}}})
        == Button::Ok;
}

/// Why the file is not to be replaced unasked; empty when nothing is against it.
QString MainWindow::reason_to_ask(const QString& path) const
{
    const QString name = filefun::get_pure_filename(path, 1);
    if (const auto holder = m_studio.other_holder(path))
        return lang(u"“%1”已在另一个 Tarn studio 中打开（%3 上的进程 %2）。仍要覆盖它吗？",
                    u"\"%1\" is open in another Tarn studio (process %2 on %3). Overwrite it all the same?")
            .arg(name, QString::number(holder->process), holder->computer);
    if (m_studio.was_changed_outside(path))
        return lang(u"“%1”打开之后被别的程序修改过。要覆盖那些修改吗？",
                    u"\"%1\" was changed by somebody else since it was opened. Overwrite these changes?")
            .arg(name);
    return {};
}

bool MainWindow::save_file(const QString& path)
{
    m_view->finish_text();
    if (const QString reason = reason_to_ask(path); !reason.isEmpty()) {
        const Button answer = tarn::boxes::message(
            this,
            {.text = reason,
             .title = {},
             .buttons = {Button::No, Button::Yes, Button::Cancel},
             .captions = {lang(u"另存为...", u"Save As..."), lang(u"覆盖", u"Overwrite"), {}}});
        if (answer != Button::Yes)
            return answer == Button::No && ask_and_save();
    }
    const bool read_only = tarn::is_read_only(path);
    if (read_only
        && !tarn::boxes::confirm(
            this, lang(u"%1 是只读文件。仍要替换它吗？", u"%1 is read-only. Replace it all the same?").arg(path)))
        return false;
    return report(m_studio.save_file(path, read_only));
}

bool MainWindow::may_discard()
{
    m_view->finish_text();
    if (!m_studio.is_changed())
        return true;
    const QString name = m_studio.file_name().isEmpty() ? lang(u"未命名", u"Untitled")
                                                        : filefun::get_pure_filename(m_studio.file_name(), 1);
    const Button answer = tarn::boxes::message(
        this,
        {.text = lang(u"“%1”已修改。要保存吗？", u"\"%1\" was changed. Save it?").arg(name),
         .title = {},
         .buttons = {Button::Yes, Button::No, Button::Cancel},
         .captions = {lang(u"保存(&S)", u"&Save"), lang(u"不保存(&D)", u"&Don't Save"), {}}});
    return answer == Button::No || (answer == Button::Yes && save());
}

void MainWindow::ask_and_new()
{
    if (may_discard())
        new_file();
}

void MainWindow::ask_and_open()
{
    if (!may_discard())
        return;
    const QString path = filedlg::pop_file_dlg(filter(), filedlg::mode_open, this,
                                               QFileInfo(m_studio.file_name()).absolutePath());
    if (!path.isEmpty())
        open_file(path);
}

bool MainWindow::ask_and_save()
{
    const QString path = filedlg::pop_file_dlg(filter(), filedlg::mode_save, this, m_studio.file_name());
    return !path.isEmpty() && save_file(path);
}

bool MainWindow::save()
{
    const bool has_place = !m_studio.file_name().isEmpty() && !m_studio.is_copy();
    return has_place ? save_file(m_studio.file_name()) : ask_and_save();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (!may_discard()) {
        event->ignore();
        return;
    }
    m_recording->finish();
    save_places();
    event->accept();
}

// What is dropped -----------------------------------------------------------------------------------------------------

namespace {

/// The file that is dropped, one that can be opened or shown; empty for anything else.
QString dropped_file(const QMimeData& data)
{
    const QList<QUrl> urls = data.urls();
    const QString path = urls.size() == 1 ? urls.front().toLocalFile() : QString();
    const QByteArray suffix = QFileInfo(path).suffix().toLower().toLatin1();
    return is_package(path) || QImageReader::supportedImageFormats().contains(suffix) ? path : QString();
}

} // namespace

/// Packages anywhere on the window; pictures on the view, while it is edited.
bool MainWindow::takes_drop(const QDropEvent& event) const
{
    const QString path = dropped_file(*event.mimeData());
    if (path.isEmpty() || !m_studio.scene())
        return false;
    const QPoint in_view = m_view->mapFrom(this, event.position().toPoint());
    return is_package(path) || (!m_studio.is_playing() && m_view->surface_rect().contains(in_view));
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    event->setAccepted(!dropped_file(*event->mimeData()).isEmpty());
}

void MainWindow::dragMoveEvent(QDragMoveEvent* event)
{
    event->setAccepted(takes_drop(*event));
}

void MainWindow::dropEvent(QDropEvent* event)
{
    if (!takes_drop(*event))
        return;
    event->acceptProposedAction();
    const QString path = dropped_file(*event->mimeData());
    const QPointF place = m_view->to_screen(m_view->mapFrom(this, event->position().toPoint()));
    // Whoever drags it must not wait for what a box asks.
    const auto take = [this, path, place] {
        m_view->finish_text();
        if (!is_package(path))
            report(m_studio.scene()->editor().drop_picture(path, place));
        else if (may_discard())
            open_file(path);
    };
    QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
}

// What was left behind ------------------------------------------------------------------------------------------------

bool MainWindow::offer_recovery()
{
    for (auto& file : m_studio.left_behind()) {
        const tarn::RecoveryInfo info = file->info();
        const QString when = QLocale().toString(info.when.toLocalTime(), QLocale::ShortFormat);
        const QString text = info.file.isEmpty()
            ? lang(u"Tarn studio 上次没有正常结束。一个从未保存的界面在 %1 被自动保留了下来。要恢复它吗？",
                   u"Tarn studio ended unexpectedly. An interface that was never saved was kept on %1. Restore it?")
                  .arg(when)
            : lang(u"Tarn studio 上次没有正常结束。%1 中未保存的修改在 %2 "
                   u"被自动保留了下来。要恢复吗？文件本身不会改动。",
                   u"Tarn studio ended unexpectedly. Unsaved changes of %1 were kept on %2. Restore them? The file "
                   u"itself "
                   u"stays as it is.")
                  .arg(QDir::toNativeSeparators(info.file), when);
        const Button answer = tarn::boxes::message(
            this,
            {.text = text,
             .title = {},
             .buttons = {Button::Yes, Button::No, Button::Cancel},
             .captions = {lang(u"恢复", u"Restore"), lang(u"丢弃", u"Discard"), lang(u"以后再说", u"Later")}});
        if (answer == Button::Yes && report(m_studio.recover(std::move(file))))
            return true;
        if (answer == Button::No)
            file->remove();
    }
    return false;
}

void MainWindow::keep_unsaved()
{
    m_view->finish_text();
    m_studio.keep_unsaved();
}
