#include "problems.h"
#include "animation/animation_scene.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/authored.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "engine/world_models.h"
#include "font_library.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_core/gui_event.h"
#include "gui_core/gui_style.h"
#include "gui_core/texture_name.h"
#include "gui_plug_scene.h"
#include "movie_file.h"
#include "movies/movie_address.h"
#include "package_writer.h"
#include "picture_names.h"
#include "script/script_runtime.h"
#include "world/world_scene.h"

#include <QHash>

#include <utility>

namespace tarn {

namespace {

using Problems = ProblemFinder::Problems;

constexpr int longest_value = 40; ///< UTF-16 units of a text that a message quotes

QString name_of(const ModelObject& object)
{
    const FieldBase* field = object.fields().find("name");
    if (!field)
        field = object.fields().find(key<&MenuItemState::text>);
    const Value name = field ? Authored::property(object, *field) : Value();
    const auto* text = std::get_if<QString>(&name);
    return text ? *text : QString();
}

void find_broken_events(CGuiPlugScene& scene, Problems& problems)
{
    for (const auto& event : scene.events().events()) {
        CDXUTControl* control = scene.gui_core().find_control(event->control());
        const QString caption = event_caption(event->type());
        if (!control)
            problems.push_back({nullptr, lang(u"控件 %1", u"Control %1").arg(event->control()),
                                lang(u"事件“%1”（函数 %2）的控件已被删除。",
                                     u"The control of the event \"%1\" (function %2) was deleted.")
                                    .arg(caption, event->function())});
        else if (!scene.functions().find_function(event->function()))
            problems.push_back(
                {control, control->name(),
                 lang(u"事件“%1”的函数 %2 不存在。", u"The event \"%1\" calls the function %2, which does not exist.")
                     .arg(caption, event->function())});
    }
}

void find_broken_menus(CGuiPlugScene& scene, ModelObject& object, const QString& name, Problems& problems)
{
    const ObjectState& state = Authored::state(object);
    for (const FieldKey key : {key<&DialogState::right_click_menu>, key<&ControlExtras::right_click_menu>,
                               key<&ControlExtras::click_menu>}) {
        const FieldBase* field = object.fields().find(key);
        if (field && !field->is_default(state)
            && !scene.gui_core().find_menu(std::get<ObjectRef>(field->get(state)).id))
            problems.push_back({&object, name,
                                lang(u"绑定的菜单（%1）不存在。", u"The menu that is bound (%1) does not exist.")
                                    .arg(QLatin1String(field->name()))});
    }
}

/// Those that attributes of menu items and controls name; events and script keys are told with more about them.
void find_missing_functions(CGuiPlugScene& scene, ModelObject& object, const QString& name, Problems& problems)
{
    const bool is_item = dynamic_cast<const CDXUTMenuItem*>(&object);
    if (!is_item && !dynamic_cast<const CDXUTControl*>(&object))
        return;
    const QString text = is_item
        ? lang(u"菜单项的函数 %1 不存在。", u"The item calls the function %1, which does not exist.")
        : lang(u"回调函数 %1 不存在。", u"The callback function %1 does not exist.");
    const ObjectState& state = Authored::state(object);
    for (const FieldBase* field : object.fields().link_fields())
        if (field->rules().function)
            for (const QString& function : field->names(state))
                if (!function.isEmpty() && !scene.functions().find_function(function))
                    problems.push_back({&object, name, text.arg(function)});
}

void find_broken_animation(CGuiPlugScene& scene, Problems& problems)
{
    for (CTimebar* bar : scene.animation().bars()) {
        for (CTimerObject* object : bar->objects())
            if (object->is_broken())
                problems.push_back(
                    {object, bar->name(),
                     lang(u"动画对象（%1）的目标不存在。", u"The target of a timer object (%1) does not exist.")
                         .arg(object->get_type_name())});
        if (!bar->end_function().isEmpty() && !scene.functions().find_function(bar->end_function()))
            problems.push_back({bar, bar->name(),
                                lang(u"时间轴结束时的函数 %1 不存在。",
                                     u"The timebar calls the function %1 when it ends, which does not exist.")
                                    .arg(bar->end_function())});
        for (CScriptKey* key : bar->script_keys())
            if (!scene.functions().find_function(key->function()))
                problems.push_back({key, bar->name(),
                                    lang(u"%1 秒处的脚本关键帧的函数 %2 不存在。",
                                         u"The script key at %1 s calls the function %2, which does not exist.")
                                        .arg(double(key->time()))
                                        .arg(key->function())});
    }
}

void find_broken_atlas(ModelObject& object, const QString& name, const DocumentState& document, Problems& problems)
{
    if (dynamic_cast<const CGuiStyle*>(&object) && document.files.contains(atlas_entry(object.id())))
        problems.push_back({nullptr, name,
                            lang(u"风格的图集已损坏，未使用；保存时保持原样。",
                                 u"The atlas of the style is damaged and not used; saving keeps it as it is.")});
}

void find_missing_files(ModelObject& object, const QString& name, const DocumentState& document, Problems& problems)
{
    const auto look_for = [&](const QString& entry, const QString& damaged, const QString& missing) {
        if (document.files.contains(entry))
            return;
        const QString& text = document.damaged.contains(entry) ? damaged : missing;
        problems.push_back({&object, name, text.arg(entry.section(QLatin1Char('/'), 1))});
    };
    const ObjectState& state = Authored::state(object);
    each_picture(state, [&](const QString& picture) {
        look_for(texture_entry(picture),
                 lang(u"图片 %1 已损坏，无法显示。", u"The picture %1 is damaged and not shown."),
                 lang(u"图片 %1 不在文件包中。", u"The picture %1 is not in the package."));
    });
    if (const QString movie = movie_entry_of(state); !movie.isEmpty())
        look_for(movie, lang(u"影片 %1 已损坏，无法播放。", u"The movie %1 is damaged and cannot be played."),
                 lang(u"影片 %1 不在文件包中。", u"The movie %1 is not in the package."));
}

/// Which fonts there are is a matter of the machine too: another one may have them.
void find_missing_fonts(CGuiPlugScene& scene, ModelObject& object, const QString& name, Problems& problems)
{
    QStringList families = font_families_of(Authored::state(object));
    families.removeDuplicates();
    for (const QString& family : std::as_const(families))
        if (!scene.fonts().find(family) && !has_font_family(family))
            problems.push_back(
                {.object = dynamic_cast<CGuiStyle*>(&object) ? nullptr : &object,
                 .place = name.isEmpty() ? lang(u"风格", u"Style") : name,
                 .text = lang(u"字体 %1 既未安装，也不在文件包中，将以 %2 代替。",
                              u"The font %1 is neither installed nor in the package; %2 is shown instead.")
                             .arg(family, drawn_font_family(family)),
                 .is_warning = true});
}

void find_broken_fonts(CGuiPlugScene& scene, Problems& problems)
{
    for (const FontLibrary::Font& font : scene.fonts().fonts())
        if (font.families.isEmpty() && has_fonts())
            problems.push_back(
                {nullptr, font.entry,
                 lang(u"文件包中的这个文件不是可用的字体，未使用；保存时保持原样。",
                      u"This file of the package is no font that can be used; saving keeps it as it is.")});
}

/// Objects whose models cannot be read, and actions that these do not have.
void find_faulty_models(CBaseWorld& world, Problems& problems)
{
    for (WorldObject* object : world.objects().objects()) {
        if (!object->has_file())
            continue;
        const ModelLibrary::Entry& read = world.models().library().find(object->file());
        if (!read.status)
            problems.push_back({object, object->name(), read.status.message()});
        if (!read.model || !object->has_actions())
            continue;
        const QString& action = static_cast<const MovingModelState&>(Authored::state(*object)).action;
        if (!action.isEmpty() && read.model->find_action(action) < 0)
            problems.push_back({object, object->name(),
                                lang(u"模型没有名为“%1”的动作。", u"The model has no action \"%1\".").arg(action)});
    }
}

/// Scripts find objects by name, and of several with one name only the first. One row for a name, at the second of them.
template <class List>
void find_shared_names(const List& objects, const QString& text, Problems& problems)
{
    QHash<QString, int> users;
    users.reserve(objects.size());
    for (const auto* object : objects)
        ++users[object->name()];
    QHash<QString, int> seen;
    for (auto* object : objects) {
        const QString name = object->name();
        const int count = users.value(name);
        if (count > 1 && !name.isEmpty() && ++seen[name] == 2)
            problems.push_back({.object = object, .place = name, .text = text.arg(count), .is_warning = true});
    }
}

void find_damaged_entries(const DocumentState& document, Problems& problems)
{
    for (auto entry = document.damaged.begin(); entry != document.damaged.end(); ++entry)
        if (!document.files.contains(entry.key()))
            problems.push_back(
                {nullptr, entry.key(),
                 entry->isNull() ? lang(u"文件包中的这个条目已损坏，内容无法取得，保存后将不再存在。",
                                        u"This entry of the package is damaged beyond reach; a saved package lacks it.")
                                 : lang(u"文件包中的这个条目已损坏；保存时保持原样。",
                                        u"This entry of the package is damaged; saving keeps it as it is.")});
}

QString value_text(const Value& value)
{
    if (const auto* text = std::get_if<QString>(&value))
        return QLatin1Char('"') + cut_text(*text, longest_value) + QLatin1Char('"');
    if (const auto* whole = std::get_if<qint64>(&value))
        return QString::number(*whole);
    if (const auto* real = std::get_if<double>(&value))
        return QString::number(*real);
    return lang(u"列表", u"a list");
}

struct NamedObject {
    ModelObject* object = nullptr;
    QString name;
};

NamedObject find_object(CGuiCore& core, quint32 id)
{
    if (id == 0)
        return {&core, lang(u"界面", u"Interface")};
    ModelObject* object = core.document().find(id);
    if (object == core.GetRootDialog())
        return {object, lang(u"屏幕", u"Screen")};
    return object && object->is_attached() ? NamedObject{object, name_of(*object)} : NamedObject();
}

/// An attribute that the author has set since is none of them.
void find_held_values(CGuiCore& core, Problems& problems)
{
    for (const HeldValue& held : core.document().state().held) {
        const NamedObject found = find_object(core, held.object);
        const FieldBase* field = found.object ? found.object->fields().find(held.field.constData()) : nullptr;
        if (!field || field->get(Authored::state(*found.object)) != held.kept)
            continue;
        const bool can_be_shown = held.object != 0 && found.object != core.GetRootDialog();
        problems.push_back(
            {.object = can_be_shown ? found.object : nullptr,
             .place = found.name,
             .text = lang(u"文件中的属性 %1 为 %2，超出允许的范围，已改为 %3。",
                          u"The file gave the property %1 as %2, which cannot be; it was made %3.")
                         .arg(QString::fromLatin1(held.field), value_text(held.given), value_text(held.kept)),
             .is_warning = true});
    }
}

} // namespace

void ProblemFinder::find_faulty_functions(CGuiPlugScene& scene, Problems& problems)
{
    const ScriptObjects& objects = scene.model().objects();
    QHash<quint64, Text> texts;
    for (const FuncPtr& function : scene.functions().functions()) {
        const auto known = m_texts.constFind(function->revision());
        Text& text = texts[function->revision()];
        if (known != m_texts.constEnd()) {
            text = *known;
        } else {
            for (const ScriptError& error : ScriptRuntime::check(function->text()))
                text.faults.append({error.line, error.message});
            text.names = names_in_script(function->text(), objects.kinds());
        }
        for (const Fault& fault : std::as_const(text.faults))
            problems.push_back({nullptr, function->name(),
                                lang(u"第 %1 行：%2", u"Line %1: %2").arg(fault.line).arg(fault.text), function->name(),
                                fault.line});
        for (const NameInScript& named : std::as_const(text.names))
            if (!objects.find(QLatin1String(named.kind.toLatin1()), named.name))
                problems.push_back({.place = function->name(),
                                    .text = lang(u"第 %1 行：%2(\"%3\") 找不到这样命名的对象。",
                                                 u"Line %1: %2(\"%3\") finds nothing of that name.")
                                                .arg(named.line)
                                                .arg(named.kind, named.name),
                                    .function = function->name(),
                                    .line = named.line,
                                    .is_warning = true});
    }
    m_texts = std::move(texts);
}

const MovieLacks& ProblemFinder::lacks_of(const QString& entry, const QByteArray& file)
{
    Movie& known = m_movies[entry];
    if (known.file.constData() != file.constData()) {
        known.file = file;
        known.lacks = read_movie_tags(file);
    }
    return known.lacks;
}

/// What of a movie the player does not show.
void ProblemFinder::find_unplayed(ModelObject& object, const QString& name, const DocumentState& document,
                                  Problems& problems)
{
    const auto warn = [&](const QString& text) {
        problems.push_back({.object = &object, .place = name, .text = text, .is_warning = true});
    };
    const auto* flash = dynamic_cast<const FlashState*>(&Authored::state(object));
    if (flash && !flash->source_local && !flash->source.isEmpty()) {
        const auto address = movie_address(flash->source);
        warn(address
                 ? lang(u"网络上的影片只在允许了其网址的机器上播放；添加为本地文件则处处可播放。",
                        u"The movie of the network plays only on machines where its address was allowed; as a local "
                        u"file it would everywhere.")
                 : address.status().message());
    }
    const QString entry = movie_entry_of(Authored::state(object));
    const auto file = document.files.find(entry);
    if (entry.isEmpty() || file == document.files.end())
        return;
    const MovieLacks& lacks = lacks_of(entry, *file);
    const QString movie = entry.section(QLatin1Char('/'), 1);
    if (lacks.packing)
        warn(lang(u"影片 %1 的压缩方式使其内容无法检查。", u"The movie %1 is packed so that it cannot be looked into.")
                 .arg(movie));
    if (lacks.filters)
        warn(lang(u"影片 %1 使用滤镜（如模糊、阴影），播放时不会显示。",
                  u"The movie %1 has filters (such as blur or shadow), which are not drawn.")
                 .arg(movie));
    if (lacks.bitmaps)
        warn(lang(u"影片 %1 的脚本会绘制位图，播放时不会显示，脚本也可能因此停止。",
                  u"Scripts of the movie %1 draw bitmaps, which do not show, and may stop there.")
                 .arg(movie));
    if (lacks.sound)
        warn(lang(u"影片 %1 有声音，播放时没有声音。", u"The movie %1 has sound, which is not played.").arg(movie));
    if (lacks.video)
        warn(lang(u"影片 %1 含有视频，播放时不会显示。", u"The movie %1 has video, which is not shown.").arg(movie));
}

Problems ProblemFinder::find(CGuiPlugScene& scene)
{
    Problems problems;
    find_broken_events(scene, problems);
    find_broken_animation(scene, problems);
    find_faulty_functions(scene, problems);
    CGuiCore& core = scene.gui_core();
    const DocumentState& document = core.document().state();
    for (ModelObject* object : core.document().objects()) {
        const QString name = name_of(*object);
        find_missing_files(*object, name, document, problems);
        find_unplayed(*object, name, document, problems);
        find_broken_atlas(*object, name, document, problems);
        find_missing_fonts(scene, *object, name, problems);
        find_broken_menus(scene, *object, name, problems);
        find_missing_functions(scene, *object, name, problems);
    }
    find_shared_names(core.GetDialogs(),
                      lang(u"%1 个窗口同名，脚本只能按名称找到最下层的一个。",
                           u"%1 dialogs have this name; by it scripts find only the lowest of them."),
                      problems);
    find_shared_names(core.controls(),
                      lang(u"%1 个控件同名，脚本只能按名称找到最先创建的一个。",
                           u"%1 controls have this name; by it scripts find only the one made first."),
                      problems);
    find_shared_names(core.GetMenus(),
                      lang(u"%1 个菜单同名，脚本只能按名称找到最先创建的一个。",
                           u"%1 menus have this name; by it scripts find only the one made first."),
                      problems);
    find_shared_names(scene.animation().bars(),
                      lang(u"%1 个时间轴同名，脚本只能按名称找到列表中最上面的一个。",
                           u"%1 timebars have this name; by it scripts find only the uppermost of the list."),
                      problems);
    if (scene.world())
        find_faulty_models(*scene.world(), problems);
    find_damaged_entries(document, problems);
    find_broken_fonts(scene, problems);
    find_held_values(core, problems);
    return problems;
}

} // namespace tarn
