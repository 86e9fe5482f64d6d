#include "play_window.h"

#include "engine/base_world.h"
#include "engine/scene_plug.h"
#include "studio.h"
#include "view/view3d.h"

#include <QFileInfo>
#include <QKeyEvent>
#include <QVBoxLayout>

PlayWindow::PlayWindow(Studio& studio, QSize size) : m_studio(studio), m_messages(*this, studio)
{
    setObjectName(QStringLiteral("play_window"));
    setWindowTitle(QFileInfo(studio.file_name()).completeBaseName());
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
    m_studio.set_playing(false);
    m_studio.world().document().changes().remove_listener(this);
    m_studio.world().on_redraw = nullptr;
    m_studio.world().on_always_refresh = nullptr;
    m_studio.world().on_message = nullptr;
}

void PlayWindow::showEvent(QShowEvent*)
{
    m_view->setFocus();
    m_studio.set_playing(true);
}

void PlayWindow::model_changed(const tarn::ModelChange&)
{
    m_view->schedule_redraw();
}

bool PlayWindow::eventFilter(QObject* watched, QEvent* event)
{
    const bool is_key = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!is_key || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F11)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress)
        setWindowState(windowState() ^ Qt::WindowFullScreen);
    return true;
}
