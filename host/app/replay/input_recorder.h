#pragma once

#include "commands/input_script.h"
#include "scene_look.h"
#include "told_by_scene.h"
#include "view/input_watch.h"

#include <QPointer>
#include <QStringList>

#include <optional>

class CView3D;
class Studio;

namespace tarn {

/// Writes down what a player does to the interface that runs in a view, and what comes of it at once: the functions that
/// are called, what they print, and what looks otherwise. It is made before the scene begins to run.
class InputRecorder : private InputWatch {
public:
    InputRecorder(Studio& studio, CView3D& view);
    ~InputRecorder() override;
    InputRecorder(const InputRecorder&) = delete;
    InputRecorder& operator=(const InputRecorder&) = delete;

    /// The preview is over: nothing more comes.
    void end();
    /// When the input is replayed, what the mouse is over now is to look as it does. Answers its name; null when the mouse
    /// is over nothing.
    QString expect_here();
    /// All that was recorded. `path` is where it will be kept: the package is named from there.
    QString text(const QString& path);

private:
    /// What was done, and what came of it.
    struct Input {
        InputStep step;
        QString target{}; ///< of the mouse; empty: nothing
        double begin = 0; ///< seconds of the scene that runs
        double end = 0;
        SceneLook before{};
        SceneLook after{};
        std::size_t told_before = 0;
        std::size_t told_after = 0;
    };

    void input_comes(bool is_move, QPointF mouse) override;
    void mouse_came(const MouseEvent& event) override;
    void key_came(int key, Qt::KeyboardModifiers modifiers) override;
    void text_came(const QString& text) override;
    void wheel_came(QPointF place, double steps) override;
    void camera_came(Qt::MouseButton button, QPointF way) override;

    Input begun(InputStep step) const;
    void finish(Input& input);
    void done(InputStep step);
    SceneLook look() const;
    void move(QPointF place);
    void release(QPointF place);
    void write_held(const Input& press, const Input& release);
    void write_key();
    void write_typing();
    void write_pending();
    void write(const Input& input);
    void wait_for(const Input& input);
    void expect_told(std::size_t from, std::size_t until);
    bool expect_last_told(std::size_t from, std::size_t until);
    void expect_changes(const Input& input);
    void add_wait(double until);
    void add(InputStep step, const QString& note = {});
    QString path_of(const ModelObject* object) const;
    QString target_at(QPointF place) const;
    double now() const;

    Studio& m_studio;
    QPointer<CView3D> m_view;
    QString m_scene; ///< path of the package; empty: it was never saved
    ToldByScene m_told;
    InputScript m_script;
    QStringList m_notes; ///< behind the script's steps
    QSize m_screen;
    QPointF m_place; ///< of the mouse
    // As the input that comes finds the scene
    SceneLook m_before;
    QString m_target; ///< what the mouse is on; empty: nothing
    double m_begin = 0;
    std::size_t m_told_before = 0;
    // What may go on
    std::optional<Input> m_press; ///< its step has the places of a drag
    std::optional<Input> m_key;   ///< it may turn out to be typing
    std::optional<Input> m_typing;
    double m_written = 0;       ///< seconds of the scene that the script has come to
    std::size_t m_expected = 0; ///< what was told until here is behind the script
};

} // namespace tarn
