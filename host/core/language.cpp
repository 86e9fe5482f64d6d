#include "language.h"

#include "template_caption.h"

#include <QCoreApplication>
#include <QObject>
#include <QStandardItemModel>
#include <QVariant>

#include <array>

namespace {

tarn::Language current_language = tarn::Language::Chinese;

struct Message {
    int number;
    const char16_t* chinese;
    const char16_t* english;
};

// The shared message table; numbers are part of the program's interface.
constexpr std::array messages{
    Message{3917, u"请先设置图片！", u"Please set a picture first!"},
    Message{3918, u"所有控件的外观将恢复为默认设置（控件自定义的风格除外），是否继续？",
            u"The look of every control, but for what has a style of its own, will go back to the default. Continue?"},
};

constexpr std::array caption_properties{"text", "title", "windowTitle", "toolTip", "placeholderText"};

/// Where the object keeps the caption that the template gave it.
QByteArray kept_caption(const char* property)
{
    return QByteArray("template_") + property;
}

void translate_captions(QObject* object, const QByteArray& context)
{
    for (const char* property : caption_properties) {
        const QString caption = object->property(property).toString();
        if (caption.isEmpty())
            continue;
        const QString translated = QCoreApplication::translate(context.constData(), caption.toUtf8().constData());
        if (translated == caption)
            continue;
        object->setProperty(property, translated);
        object->setProperty(kept_caption(property).constData(), caption);
    }
}

/// The entries that a form gives a combo box.
void translate_items(QStandardItemModel& items, const QByteArray& context)
{
    for (int row = 0; row < items.rowCount(); ++row)
        if (QStandardItem* item = items.item(row))
            item->setText(QCoreApplication::translate(context.constData(), item->text().toUtf8().constData()));
}

} // namespace

void VLCMsgIniW::set_language(tarn::Language language)
{
    current_language = language;
}

tarn::Language VLCMsgIniW::language()
{
    return current_language;
}

QString VLCMsgIniW::switch_lang(const QString& chinese, const QString& english)
{
    return current_language == tarn::Language::Chinese ? chinese : english;
}

QString VLCMsgIniW::VLoadString(int number)
{
    for (const Message& message : messages)
        if (message.number == number)
            return tarn::lang(message.chinese, message.english);
    return {};
}

void CTarnLanguageConvert::init_dlg_language(QObject* window, const QString& name)
{
    if (!window || current_language == tarn::Language::Chinese)
        return;
    const QByteArray context = name.toUtf8();
    translate_captions(window, context);
    const auto children = window->findChildren<QObject*>();
    for (QObject* child : children) {
        translate_captions(child, context);
        if (auto* items = qobject_cast<QStandardItemModel*>(child))
            translate_items(*items, context);
    }
}

QString tarn::template_caption(const QObject& object, const char* property)
{
    return object.property(kept_caption(property).constData()).toString();
}
