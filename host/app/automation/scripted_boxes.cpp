#include "scripted_boxes.h"

#include "automation.h"
#include "page_handles.h"

#include <QDialog>
#include <QTimer>

#include <algorithm>

namespace tarn::script {

namespace {

using boxes::Button;

struct ButtonName {
    Button button;
    const char* name;
};
constexpr ButtonName button_names[]
    = {{Button::Ok, "ok"}, {Button::Cancel, "cancel"}, {Button::Yes, "yes"}, {Button::No, "no"}};

QString name_of(Button button)
{
    for (const ButtonName& row : button_names)
        if (row.button == button)
            return QLatin1String(row.name);
    return {};
}

/// The answer that changes least.
Button harmless(const boxes::Message& box)
{
    for (const Button button : {Button::Cancel, Button::No})
        if (std::find(box.buttons.begin(), box.buttons.end(), button) != box.buttons.end())
            return button;
    return box.buttons.empty() ? Button::Ok : box.buttons.front();
}

QStringList names_of(const std::vector<Button>& buttons)
{
    QStringList names;
    for (const Button button : buttons)
        names.append(name_of(button));
    return names;
}

QString what_is(const Answer& answer)
{
    if (const auto* text = std::get_if<QString>(&answer))
        return u'"' + *text + u'"';
    if (const auto* number = std::get_if<qint64>(&answer))
        return QString::number(*number);
    if (std::holds_alternative<QColor>(answer))
        return QStringLiteral("a colour");
    return std::holds_alternative<bool>(answer) ? QStringLiteral("false") : QStringLiteral("a function");
}

QString quoted(const char* kind, const QString& text)
{
    return QStringLiteral("the %1 \"%2\"").arg(QLatin1String(kind), text);
}

} // namespace

Data color_data(const QColor& color)
{
    return Data::List{color.red(), color.green(), color.blue()};
}

std::size_t ScriptedBoxes::show(Data::Record box)
{
    m_shown.push_back(std::move(box));
    return m_shown.size() - 1;
}

Data::List ScriptedBoxes::take_shown()
{
    Data::List list;
    for (Data::Record& record : std::exchange(m_shown, {}))
        list.push_back(std::move(record));
    return list;
}

void ScriptedBoxes::fail(const QString& message)
{
    if (m_failure)
        m_failure = Status::error(message);
}

template <class T>
std::optional<std::variant<bool, T>> ScriptedBoxes::next(const QString& box, const char* needed)
{
    if (m_answers.empty()) {
        fail(QStringLiteral("no answer is queued for %1").arg(box));
        return std::nullopt;
    }
    const Answer answer = m_answers.front();
    m_answers.pop_front();
    if (const auto* value = std::get_if<T>(&answer))
        return *value;
    if (const auto* cancelled = std::get_if<bool>(&answer); cancelled && !*cancelled)
        return false;
    fail(QStringLiteral("%1 was answered with %2 and needs %3").arg(box, what_is(answer), QLatin1String(needed)));
    return std::nullopt;
}

Button ScriptedBoxes::message(QWidget*, const boxes::Message& box)
{
    const QStringList names = names_of(box.buttons);
    const std::size_t place = show(
        {{"kind", QStringLiteral("message")}, {"text", box.text}, {"title", box.title}, {"buttons", names}});
    const QByteArray needed = names.join(QStringLiteral(" or ")).toLatin1();
    const QString called = quoted("message box", box.text);
    const auto answer = next<QString>(called, needed.constData());
    Button chosen = harmless(box);
    if (answer) {
        const auto* name = std::get_if<QString>(&*answer);
        const qsizetype index = name ? names.indexOf(*name) : -1;
        if (index >= 0)
            chosen = box.buttons[std::size_t(index)];
        else
            fail(QStringLiteral("%1 has no button %2; it has %3")
                     .arg(called, name ? u'"' + *name + u'"' : QStringLiteral("false"), QLatin1String(needed)));
    }
    m_shown[place].emplace_back("answer", name_of(chosen));
    return chosen;
}

std::optional<QString> ScriptedBoxes::prompt(QWidget*, const boxes::Prompt& box)
{
    const std::size_t place = show(
        {{"kind", QStringLiteral("prompt")}, {"text", box.text}, {"title", box.title}, {"initial", box.initial}});
    const auto answer = next<QString>(quoted("prompt", box.text), "a text or false");
    const auto* text = answer ? std::get_if<QString>(&*answer) : nullptr;
    if (text && text->size() > box.max_length)
        fail(QStringLiteral("%1 takes at most %2 characters").arg(quoted("prompt", box.text)).arg(box.max_length));
    m_shown[place].emplace_back("answer", text ? Data(*text) : Data(false));
    return text && text->size() <= box.max_length ? std::optional(*text) : std::nullopt;
}

QString ScriptedBoxes::file(QWidget*, const boxes::File& box)
{
    const std::size_t place = show(
        {{"kind", QStringLiteral("file")}, {"title", box.title}, {"filter", box.filter}, {"initial", box.initial}});
    const QString called = box.title.isEmpty() ? quoted("file dialog", box.filter) : quoted("file dialog", box.title);
    const auto answer = next<QString>(called, "a path or false");
    const auto* path = answer ? std::get_if<QString>(&*answer) : nullptr;
    m_shown[place].emplace_back("answer", path ? Data(*path) : Data(false));
    return path ? *path : QString();
}

int ScriptedBoxes::menu(QWidget*, const boxes::Menu& menu)
{
    Data::List items;
    QStringList texts;
    for (const boxes::MenuItem& item : menu.items) {
        if (item.id == 0)
            continue;
        texts.append(item.text);
        items.push_back(
            Data::Record{{"id", item.id}, {"text", item.text}, {"enabled", item.enabled}, {"checked", item.checked}});
    }
    const std::size_t place = show({{"kind", QStringLiteral("menu")}, {"items", items}});
    const QString called = quoted("menu", texts.join(QStringLiteral(", ")));
    const auto answer = next<qint64>(called, "a command's number or 0");
    const auto* id = answer ? std::get_if<qint64>(&*answer) : nullptr;
    const auto chosen = std::find_if(menu.items.begin(), menu.items.end(),
                                     [&](const boxes::MenuItem& item) { return id && item.id == *id; });
    const bool can_be_chosen = chosen != menu.items.end() && chosen->id != 0 && chosen->enabled;
    if (id && *id != 0 && !can_be_chosen)
        fail(QStringLiteral("%1 has no enabled command %2").arg(called).arg(*id));
    const int result = can_be_chosen ? chosen->id : 0;
    m_shown[place].emplace_back("answer", result);
    return result;
}

std::optional<QColor> ScriptedBoxes::color(QWidget*, const QColor& initial)
{
    const std::size_t place = show({{"kind", QStringLiteral("color")}, {"initial", color_data(initial)}});
    const auto answer = next<QColor>(QStringLiteral("the colour chooser"), "a colour {r, g, b} or false");
    const auto* color = answer ? std::get_if<QColor>(&*answer) : nullptr;
    m_shown[place].emplace_back("answer", color ? color_data(*color) : Data(false));
    return color ? std::optional(*color) : std::nullopt;
}

int ScriptedBoxes::dialog(QDialog& dialog)
{
    const auto* page = dialog.findChild<CChildDlg*>();
    const QString name = page ? page->page_name() : dialog.windowTitle();
    const std::size_t place = show(
        {{"kind", QStringLiteral("dialog")}, {"text", name}, {"title", dialog.windowTitle()}});
    const QString called = quoted("dialog", name);
    const auto answer = next<FunctionRef>(called, "a function");
    const auto* function = answer ? std::get_if<FunctionRef>(&*answer) : nullptr;
    int result = QDialog::Rejected;
    if (function) {
        QTimer::singleShot(0, &dialog, [&, function = *function] { run_function(dialog, function); });
        result = dialog.exec();
    } else if (answer) {
        fail(QStringLiteral("%1 was answered with false and needs a function").arg(called));
    }
    // take_shown() inside the function may have emptied the list.
    if (place < m_shown.size())
        m_shown[place].emplace_back("answer",
                                    result == QDialog::Accepted ? QStringLiteral("ok") : QStringLiteral("cancel"));
    return result;
}

void ScriptedBoxes::run_function(QDialog& dialog, FunctionRef function)
{
    const QPointer<QDialog> open(&dialog);
    auto* page = dialog.findChild<CChildDlg*>();
    lua_State* lua = m_app.running();
    lua_rawgeti(lua, LUA_REGISTRYINDEX, function.reference);
    luaL_unref(lua, LUA_REGISTRYINDEX, function.reference);
    if (page)
        page_handle(*page).push(lua);
    else
        lua_pushnil(lua);
    if (lua_pcall(lua, 1, 0, 0) != LUA_OK) {
        const bool has_text = lua_type(lua, -1) == LUA_TSTRING;
        fail(has_text ? lua::read_text(lua, -1) : QStringLiteral("the answer's function failed"));
        lua_pop(lua, 1);
    }
    if (!open || !open->isVisible())
        return;
    fail(QStringLiteral("%1 was left open").arg(quoted("dialog", page ? page->page_name() : open->windowTitle())));
    open->done(QDialog::Rejected); // reject() may ask and stay.
}

} // namespace tarn::script
