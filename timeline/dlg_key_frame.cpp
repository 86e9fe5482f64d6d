#include "dlg_key_frame.h"

#include "animation/timebar.h"
#include "core/language.h"
#include "core/res_handle_man.h"
#include "engine/base_world.h"
#include "engine/world_models.h"
#include "frame/boxes.h"
#include "frame/child_dlg.h"
#include "page_base/gui_child_dlg.h"
#include "widgets/button_st.h"
#include "widgets/super_edit.h"
#include "world/world_scene.h"

#include <QCheckBox>
#include <QComboBox>
#include <QVBoxLayout>

#include <algorithm>

using tarn::Channel;
using tarn::CObjKey;
using tarn::KeyValue;
using tarn::lang;
using tarn::ObjectRef;
using tarn::TimerObjectType;

namespace {

constexpr int at_rest = -1; ///< as the number of an action

/// Controls of a form by what they show. 0: the form has none.
struct Form {
    const char* class_name;
    int template_id;
    const char16_t* chinese;
    const char16_t* english;
    int time;
    int group;
    int path;
    int share;
    int turn;
    int show;
    int along;
    int ok;
    int cancel;
    int loops = 0;
    int action = 0;
    int by_camera = 0;
};

constexpr Form model_form{"CDlgPropTimerModelKeyFrameProperties",
                          6614,
                          u"模型类 动画关键帧",
                          u"Model Key Frame",
                          6247,
                          6248,
                          6603,
                          6602,
                          6252,
                          6246,
                          6251,
                          6249,
                          6250};
constexpr Form animated_model_form{"CDlgPropTimerAniModelKeyFrameProperties",
                                   6606,
                                   u"模型类 动画关键帧",
                                   u"Model Key Frame",
                                   6254,
                                   6255,
                                   6261,
                                   6260,
                                   6259,
                                   6253,
                                   6258,
                                   6256,
                                   6257,
                                   6607};
constexpr Form skeleton_form{"CDlgPropTimerSekletonKeyFrameProperties",
                             6615,
                             u"角色类 动画关键帧",
                             u"Character Key Frame",
                             6234,
                             6236,
                             6242,
                             6241,
                             6240,
                             6233,
                             6239,
                             6237,
                             6238,
                             6596,
                             6235,
                             6297};

/// Cameras and panels have what the models have; null for what is no object of the world.
const Form* form_of(TimerObjectType type)
{
    switch (type) {
    case TimerObjectType::Model:
    case TimerObjectType::Camera:
    case TimerObjectType::Panel: return &model_form;
    case TimerObjectType::AniModel: return &animated_model_form;
    case TimerObjectType::Skeleton: return &skeleton_form;
    case TimerObjectType::Script:
    case TimerObjectType::Control:
    case TimerObjectType::Dialog: break;
    }
    return nullptr;
}

// Radians are shown with another pi than they are stored with, as saved scenes have it.
constexpr double pi_shown = 3.14;
constexpr double pi_stored = 3.140000104904175;

double degrees_of(float radians)
{
    return double(radians) / pi_shown * 180;
}
float radians_of(double degrees)
{
    return float(degrees / 180 * pi_stored);
}

} // namespace

bool tarn::has_key_dialog(TimerObjectType type)
{
    return form_of(type);
}

// The template's controls, by which automation knows the dialog.
class CDlgKeyFrame::Page : public CChildDlg {
public:
    Page(QDialog& dialog, const Form& form, CBaseWorld& world, const std::vector<CObjKey>& keys)
        : CChildDlg(QLatin1String(form.class_name), &dialog),
          m_dialog(dialog),
          m_form(form),
          m_base(world),
          m_keys(keys),
          m_object(keys.front().object())
    {
    }

protected:
    void OnInitDialog() override
    {
        CChildDlg::OnInitDialog();
        set_up_edits();
        fill();
        m_known = read();
        for (const int id : {m_form.group, m_form.share, m_form.turn, m_form.loops})
            if (id)
                on_number(id, [this](double) { apply(); });
        for (const int id : {m_form.show, m_form.along, m_form.by_camera})
            if (id)
                connect(control_as<QCheckBox>(id), &QCheckBox::clicked, this,
                        [this] { run_action([this] { apply(); }, lang(u"关键帧属性", u"Key Frame")); });
        on_choose(m_form.path, [this](int) { apply(); });
        if (m_form.action)
            on_choose(m_form.action, [this](int) { apply(); });
        connect(control_as<CSuperEdit>(m_form.time), &CSuperEdit::editing_finished, this,
                [this] { run_action([this] { move_keys(); }, lang(u"移动关键帧", u"Move Keys")); });
        on_click(m_form.ok, [this] { m_dialog.accept(); });
        on_click(m_form.cancel, [this] { m_dialog.reject(); });
        button(m_form.ok)->setDefault(true);
    }
    tarn::Journal* journal() const override { return &m_object.journal(); }

private:
    struct Fields {
        bool shows = false;
        double share = 0;
        double turn = 0; ///< degrees
        int group = 0;
        int loops = 0;
        int action = at_rest;
    };

    void set_up_edits()
    {
        struct Range {
            int id;
            double least;
            double most;
            double step;
            const char* format;
        };
        const double length = double(m_object.timebar()->get_total_length());
        for (const Range& range :
             {Range{m_form.time, 0, length, 0.01, "%.6g"}, Range{m_form.group, -1, 999, 1, "%1.0f"},
              Range{m_form.share, -999, 999, 0.001, "%.6g"}, Range{m_form.turn, -7200, 7200, 0.001, "%.6g"},
              Range{m_form.loops, 0, 9999, 1, "%1.0f"}})
            if (range.id) {
                edit(range.id).set_range(range.least, range.most, range.step);
                edit(range.id).set_format_string(QLatin1String(range.format));
            }
    }

    void fill()
    {
        const CObjKey& key = m_keys.front();
        m_time = m_object.timebar()->current_time();
        edit(m_form.time).set_pos(double(m_time));
        edit(m_form.group).set_pos(key.group());
        edit(m_form.share).set_pos(double(key.value(Channel::PathShare).part(0)));
        edit(m_form.turn).set_pos(degrees_of(key.value(Channel::PathTurn).part(0)));
        if (m_form.loops)
            edit(m_form.loops).set_pos(key.value(Channel::Loops).as_int());
        if (m_form.action)
            fill_actions();
        control_as<QCheckBox>(m_form.show)
            ->setChecked(key.has(Channel::Show) ? key.value(Channel::Show).as_int() != 0 : true);
        control_as<QCheckBox>(m_form.along)->setChecked(m_object.follows_direction());
        if (m_form.by_camera)
            control_as<QCheckBox>(m_form.by_camera)->setChecked(m_object.is_led_by_camera());
        auto* paths = control_as<QComboBox>(m_form.path);
        paths->addItem(lang(u"无路径", u"No path"));
        for (const tarn::WorldObject* object : m_base.objects().objects())
            if (object->type() == tarn::WorldType::Path) {
                paths->addItem(object->name(), object->id());
                if (object->id() == m_object.path().id)
                    paths->setCurrentIndex(paths->count() - 1);
            }
    }

    /// The first entry is none; without a model that was read there is no other.
    void fill_actions()
    {
        auto* combo = control_as<QComboBox>(m_form.action);
        combo->addItem(lang(u"（静止）", u"(At rest)"));
        const auto* object = dynamic_cast<const tarn::WorldObject*>(m_object.target_object());
        const tarn::ModelPtr model = object ? m_base.models().library().find(object->file()).model : nullptr;
        if (model)
            for (const tarn::ModelAction& action : model->data().actions)
                combo->addItem(action.name);
        const CObjKey& key = m_keys.front();
        combo->setCurrentIndex(key.has(Channel::Action) ? key.value(Channel::Action).as_int() + 1 : 0);
    }

    Fields read() const
    {
        return {.shows = control_as<QCheckBox>(m_form.show)->isChecked(),
                .share = edit(m_form.share).get_pos(),
                .turn = edit(m_form.turn).get_pos(),
                .group = int(edit(m_form.group).get_pos()),
                .loops = m_form.loops ? int(edit(m_form.loops).get_pos()) : 0,
                .action = m_form.action ? control_as<QComboBox>(m_form.action)->currentIndex() - 1 : at_rest};
    }

    /// Writes what is another than before to all the keys, and to the object what it follows.
    void apply()
    {
        const Fields now = read();
        if (now.shows != m_known.shows)
            put(Channel::Show, KeyValue::whole(now.shows));
        if (now.share != m_known.share)
            put(Channel::PathShare, KeyValue::number(float(now.share)));
        if (now.turn != m_known.turn)
            put(Channel::PathTurn, KeyValue::number(radians_of(now.turn)));
        if (now.loops != m_known.loops)
            put(Channel::Loops, KeyValue::whole(now.loops));
        if (now.action != m_known.action)
            put(Channel::Action, KeyValue::whole(now.action));
        if (now.group != m_known.group)
            for (CObjKey& key : m_keys)
                key.set_group(now.group);
        m_known = now;
        apply_ways();
        m_object.update_frame();
    }
    void apply_ways()
    {
        const quint32 path = control_as<QComboBox>(m_form.path)->currentData().toUInt();
        if (path)
            m_object.set_path(ObjectRef{path});
        else
            m_object.clear_path();
        m_object.set_follows_direction(control_as<QCheckBox>(m_form.along)->isChecked());
        if (m_form.by_camera)
            m_object.set_led_by_camera(control_as<QCheckBox>(m_form.by_camera)->isChecked());
    }
    void put(Channel channel, const KeyValue& value)
    {
        for (CObjKey& key : m_keys)
            key.set_value(channel, value);
    }

    /// To the time that was typed; first keys stay.
    void move_keys()
    {
        const auto to = float(edit(m_form.time).get_pos());
        if (to == m_time)
            return;
        tarn::KeySelection moved;
        for (CTVar* variable : m_object.variables())
            moved[variable] = {m_keys.front().time()};
        CTimebar& bar = *m_object.timebar();
        if (bar.retime_keys(moved, [to](float) { return to; })) {
            m_keys.front() = CObjKey(m_object, to);
            m_time = to;
            bar.set_current_time(to, 1);
        } else {
            edit(m_form.time).set_pos(double(m_time));
            tarn::boxes::message(
                this, {.text = lang(u"不能移动第一个关键帧！", u"First key can not be moved!"), .title = {}});
        }
    }

    CSuperEdit& edit(int id) const { return *control_as<CSuperEdit>(id); }

    QDialog& m_dialog;
    const Form& m_form;
    CBaseWorld& m_base;
    std::vector<CObjKey> m_keys;
    CTimerObject& m_object;
    Fields m_known; ///< what the keys have
    float m_time = 0;
};

CDlgKeyFrame::CDlgKeyFrame(CBaseWorld& world, const std::vector<CObjKey>& keys)
{
    const Form& form = *form_of(keys.front().object().type());
    auto* page = new Page(*this, form, world, keys);
    const CResHandleMan guard(tarn::gui_ui_resources());
    page->Create(form.template_id, this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(page);
    setWindowTitle(lang(form.chinese, form.english));
}

void CDlgKeyFrame::do_modal(QWidget* parent, CBaseWorld& world, const std::vector<CObjKey>& keys)
{
    CDlgKeyFrame dialog(world, keys);
    dialog.setParent(parent, dialog.windowFlags());
    tarn::boxes::dialog(dialog);
}
