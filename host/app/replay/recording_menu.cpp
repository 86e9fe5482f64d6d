#include "recording_menu.h"

#include "core/language.h"
#include "frame/boxes.h"
#include "frame/filedlg.h"
#include "input_recorder.h"
#include "store/atomic_file.h"
#include "studio.h"
#include "view/view3d.h"

#include <QAction>
#include <QFileInfo>
#include <QMainWindow>
#include <QMenu>
#include <QStatusBar>

namespace tarn {

namespace {

filter_man script_filter()
{
    filter_man filter;
    filter.add_filter(lang(u"输入脚本", u"Recorded input"),
                      QStringLiteral("(*.%1)|*.%1||").arg(QLatin1String(input_script_suffix)));
    return filter;
}

/// `object` is what the mouse was over.
QString expect_text(const QString& object)
{
    return object.isNull()
        ? lang(u"鼠标下没有对象。", u"The mouse is over nothing.")
        : lang(u"已加入期望：%1 保持现在的样子。", u"Expected from now on: %1 looks as it does.").arg(object);
}

} // namespace

Status save_recording(InputRecorder& recorder, const QString& path)
{
    return write_file_atomically(path, recorder.text(path).toUtf8());
}

RecordingMenu::RecordingMenu(Studio& studio, CView3D& view, QMainWindow& window, QMenu& menu)
    : QObject(&menu),
      m_studio(studio),
      m_view(view),
      m_window(window),
      m_record(menu.addAction(QString())),
      m_expect(menu.addAction(lang(u"期望鼠标下的对象(&X)", u"E&xpect What the Mouse Is Over")))
{
    m_record->setObjectName(QStringLiteral("record_input"));
    m_record->setShortcut(Qt::CTRL | Qt::Key_F5);
    m_expect->setObjectName(QStringLiteral("expect_here"));
    m_expect->setShortcut(Qt::Key_F7);
    connect(m_record, &QAction::triggered, this, &RecordingMenu::toggle);
    connect(m_expect, &QAction::triggered, this, &RecordingMenu::expect);
    connect(&studio, &Studio::document_changed, this, &RecordingMenu::follow_preview);
    follow_preview();
}

RecordingMenu::~RecordingMenu() = default;

void RecordingMenu::toggle()
{
    const bool begins = !m_recorder;
    m_view.finish_text();
    m_studio.set_playing(false);
    if (!begins)
        return;
    m_recorder = std::make_unique<InputRecorder>(m_studio, m_view);
    m_studio.set_playing(true);
    m_window.statusBar()->showMessage(lang(u"正在录制。%1：期望鼠标下的对象；%2：结束。",
                                           u"Recording. %1 expects what the mouse is over, %2 ends it.")
                                          .arg(m_expect->shortcut().toString(QKeySequence::NativeText),
                                               m_record->shortcut().toString(QKeySequence::NativeText)));
}

void RecordingMenu::expect()
{
    if (m_recorder)
        m_window.statusBar()->showMessage(expect_text(m_recorder->expect_here()));
}

/// However the preview ends, what was recorded is kept.
void RecordingMenu::follow_preview()
{
    if (m_recorder && !m_studio.is_playing()) {
        m_recorder->end();
        m_recorded = std::move(m_recorder);
        m_window.statusBar()->clearMessage();
        QMetaObject::invokeMethod(this, &RecordingMenu::save, Qt::QueuedConnection);
    }
    m_record->setText(m_recorder ? lang(u"结束录制(&E)", u"&End Recording") : lang(u"录制输入(&E)", u"R&ecord Input"));
    m_record->setEnabled(m_studio.scene());
    m_expect->setEnabled(m_recorder != nullptr);
}

void RecordingMenu::finish()
{
    if (m_recorder)
        m_studio.set_playing(false);
    save();
}

void RecordingMenu::save()
{
    const std::unique_ptr<InputRecorder> recorded = std::move(m_recorded);
    if (!recorded)
        return;
    const QString usual = QFileInfo(m_studio.file_name()).completeBaseName();
    const QString path = filedlg::pop_file_dlg(script_filter(), filedlg::mode_save, &m_window, usual);
    if (path.isEmpty())
        return;
    if (const auto status = save_recording(*recorded, path); !status)
        boxes::error(&m_window, status.message());
}

} // namespace tarn
