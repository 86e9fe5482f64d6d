#include "play_window.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "engine/scene_plug.h"
#include "replay/input_recorder.h"
#include "studio.h"
#include "view/view3d.h"

#include <QFileInfo>
#include <QKeyEvent>
#include <QVBoxLayout>

using tarn::lang;

PlayWindow::PlayWindow(Studio& studio, QSize size) : m_studio(studio), m_messages(*this, studio)
{
    setObjectName(QStringLiteral("play_window"));
    show_title({});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_view = new CView3D(studio.world(), this);
    m_view->installEventFilter(this);
    layout->addWidget(m_view);
    CBaseWorld& world = studio.world();
    world.on_redraw = [this] { m_view->schedule_redraw(); };
    world.on_always_refresh = [this](bool on) { m_view->set_always_refresh(on); };
    world.on_message = [this](const QString& text, const QString& title) { m_messages.post(text, title); };
    world.document().changes().add_listener(this);
    resize(size.isEmpty() ? studio.scene()->design_size() : size);
}

PlayWindow::~PlayWindow()
{
    m_recorder.reset();
    m_studio.set_playing(false);
    m_studio.world().document().changes().remove_listener(this);
    m_studio.world().on_redraw = nullptr;
    m_studio.world().on_always_refresh = nullptr;
    m_studio.world().on_message = nullptr;
}

void PlayWindow::showEvent(QShowEvent*)
{
    m_view->setFocus();
    if (m_records && !m_recorder && !m_studio.is_playing()) {
        m_recorder = std::make_unique<tarn::InputRecorder>(m_studio, *m_view);
        show_title({});
    }
    m_studio.set_playing(true);
}

void PlayWindow::show_title(const QString& expected)
{
    QString title = QFileInfo(m_studio.file_name()).completeBaseName();
    if (m_recorder)
        title += lang(u"（正在录制，F7：期望鼠标下的对象）", u" (recording; F7 expects what the mouse is over)");
    if (!expected.isNull())
        title += lang(u" 期望：%1", u" Expected: %1").arg(expected);
    setWindowTitle(title);
}

std::unique_ptr<tarn::InputRecorder> PlayWindow::take_recorded()
{
    if (m_recorder)
        m_recorder->end();
    return std::move(m_recorder);
}

void PlayWindow::model_changed(const tarn::ModelChange&)
{
    m_view->schedule_redraw();
}

bool PlayWindow::eventFilter(QObject* watched, QEvent* event)
{
    const bool is_key = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    const int key = is_key ? static_cast<QKeyEvent*>(event)->key() : 0;
    if (key != Qt::Key_F11 && (key != Qt::Key_F7 || !m_recorder))
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress && key == Qt::Key_F11)
        setWindowState(windowState() ^ Qt::WindowFullScreen);
    else if (event->type() == QEvent::KeyPress)
        show_title(m_recorder->expect_here());
    return true;
}
