#include "dlg_translations.h"

#include "core/language.h"
#include "frame/boxes.h"
#include "frame/filedlg.h"
#include "frame/str_input.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/translations/csv_text.h"
#include "gui_scene/translations/translations.h"
#include "store/atomic_file.h"
#include "store/plain_file.h"
#include "translation_table.h"
#include "translation_view.h"
#include "widgets/button_st.h"
#include "widgets/wrap_layout.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QSignalBlocker>

#include <algorithm>

using tarn::lang;
using tarn::SeenText;
using tarn::TranslationTable;

namespace {

enum Id : int {
    id_language = 7301,
    id_filter = 7302,
    id_search = 7303,
    id_add = 7304,
    id_remove = 7305,
    id_import = 7306,
    id_export = 7307,
};

constexpr int object_width = 130; ///< pixels
constexpr int text_width = 190;
constexpr int measure_delay = 200;                 ///< milliseconds
constexpr qint64 largest_table = 64 * 1024 * 1024; ///< bytes

filter_man tables()
{
    filter_man filter;
    filter.add_filter(lang(u"表格 (CSV)", u"Tables (CSV)"), QStringLiteral("(*.csv)|*.csv||"));
    return filter;
}

} // namespace

CDlgTranslations::CDlgTranslations(QWidget* parent) : CGuiChildDlg(QStringLiteral("CDlgTranslations"), parent) {}

QWidget* CDlgTranslations::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name != QLatin1String("CTranslationView"))
        return nullptr;
    m_view = new CTranslationView(parent);
    return m_view;
}

void CDlgTranslations::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    wrap_items_of(*findChild<QWidget*>(QStringLiteral("tools")));
    set_up_table();
    m_measuring.setSingleShot(true);
    connect(&m_measuring, &QTimer::timeout, this, [this] { measure(); });
    auto* filter = control_as<QComboBox>(id_filter);
    filter->addItems({lang(u"全部文字", u"All texts"), lang(u"缺少译文", u"Missing"), lang(u"原文已改", u"Outdated"),
                      lang(u"放不下", u"Too long")});
    connect(filter, &QComboBox::activated, this, [this] { refresh(); });
    auto* search = control_as<QLineEdit>(id_search);
    search->setPlaceholderText(lang(u"查找", u"Search"));
    search->setClearButtonEnabled(true);
    connect(search, &QLineEdit::textChanged, this, [this] { refresh(); });
    auto* language = control_as<QComboBox>(id_language);
    connect(language, &QComboBox::activated, this, [this, language] {
        if (scene())
            scene()->set_language(language->currentData().toString());
    });
    on_click(id_add, [this] { on_add(); });
    on_click(id_remove, [this] { on_remove(); });
    on_click(id_import, [this] { on_import(); });
    on_click(id_export, [this] { on_export(); });
}

void CDlgTranslations::set_up_table()
{
    m_table = new TranslationTable(m_view);
    m_table->on_edit = [this](const SeenText& text, const QString& language, const QString& translated) {
        if (is_editing())
            run_action([&] { scene()->translations().set_text(text, language, translated); },
                       lang(u"翻译文字", u"Translate"));
    };
    m_view->in_one_step = [this](const std::function<void()>& change) {
        if (is_editing())
            run_action(change, lang(u"翻译文字", u"Translate"));
    };
    m_view->setModel(m_table);
    m_view->setAccessibleName(lang(u"译文表", u"Table of Translations"));
    m_view->setAlternatingRowColors(true);
    m_view->setWordWrap(false);
    m_view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                            | QAbstractItemView::AnyKeyPressed);
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_view->verticalHeader()->setDefaultSectionSize(m_view->fontMetrics().height() + 8);
    m_view->horizontalHeader()->setStretchLastSection(true);
    m_view->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_view->horizontalHeader()->setDefaultSectionSize(text_width);
}

void CDlgTranslations::on_world_created(CBaseWorld* world)
{
    CGuiChildDlg::on_world_created(world);
    refresh();
}

/// While somebody types, rows neither come nor go, which would end it, unless what they show is gone.
void CDlgTranslations::model_changed(const tarn::ModelChange& change)
{
    m_stale = true;
    const bool is_gone = change.everything
        || std::ranges::any_of(change.objects, [](const auto& object) { return object.was_removed(); });
    if (isVisible() && is_typing() && !is_gone)
        m_measuring.start(measure_delay);
    else if (isVisible())
        refresh();
}

bool CDlgTranslations::is_typing() const
{
    return m_view->viewport()->isAncestorOf(QApplication::focusWidget());
}

void CDlgTranslations::showEvent(QShowEvent* event)
{
    CGuiChildDlg::showEvent(event);
    if (m_stale)
        refresh();
}

void CDlgTranslations::refresh()
{
    m_stale = !isVisible();
    if (m_stale || !scene()) {
        m_table->show(nullptr, TranslationTable::Filter::All, {}); // What it would show may go meanwhile.
        return;
    }
    list();
    m_measuring.start(measure_delay);
}

void CDlgTranslations::measure()
{
    if (!isVisible() || !scene())
        return;
    if (is_typing())
        return m_measuring.start(measure_delay);
    m_table->measure();
    list();
}

TranslationTable::Filter CDlgTranslations::filter() const
{
    return TranslationTable::Filter(control_as<QComboBox>(id_filter)->currentIndex());
}

void CDlgTranslations::list()
{
    const QModelIndex before = m_view->currentIndex();
    const int columns = m_table->columnCount();
    m_table->show(scene(), filter(), control_as<QLineEdit>(id_search)->text());
    if (m_table->columnCount() != columns) {
        m_view->setColumnWidth(TranslationTable::Object, object_width);
        m_view->setColumnWidth(TranslationTable::Text, text_width);
    }
    if (!m_view->currentIndex().isValid()) // The rows are others.
        m_view->setCurrentIndex(m_table->index(before.row(), before.column()));
    show_languages();
}

void CDlgTranslations::show_languages()
{
    const QStringList& languages = scene()->translations().languages();
    auto* box = control_as<QComboBox>(id_language);
    const QSignalBlocker quiet(box);
    box->clear();
    box->addItem(lang(u"（原文）", u"(As written)"), QString());
    for (const QString& language : languages)
        box->addItem(language, language);
    if (!languages.contains(scene()->language()))
        scene()->set_language({});
    box->setCurrentIndex(box->findData(scene()->language()));
    for (const int id : {id_remove, id_export})
        button(id)->setEnabled(!languages.isEmpty());
}

void CDlgTranslations::on_add()
{
    QString name;
    if (!scene() || !is_editing()
        || !PopDlgStrInput(this, lang(u"语言，例如 en、zh、de：", u"Language, for example en, zh, de:"),
                           lang(u"添加语言", u"Add Language"), {}, name, tarn::max_language_name))
        return;
    if (const auto status = scene()->translations().add_language(name); !status)
        tarn::boxes::error(this, status.message());
}

/// The one whose column is current, or else the only one.
void CDlgTranslations::on_remove()
{
    if (!scene() || !is_editing())
        return;
    const QStringList languages = scene()->translations().languages();
    QString language = m_table->language(m_view->currentIndex().column());
    if (language.isEmpty() && languages.size() == 1)
        language = languages.front();
    if (language.isEmpty())
        return tarn::boxes::error(
            this, lang(u"请先点击要删除的语言那一列。", u"Click into the column of the language that is to go first."));
    if (tarn::boxes::confirm(
            this, lang(u"语言 %1 和它的所有译文都将删除。", u"The language %1 goes with all its texts.").arg(language)))
        scene()->translations().remove_language(language);
}

void CDlgTranslations::on_export()
{
    const QString path = scene() ? filedlg::pop_file_dlg(tables(), filedlg::mode_save, this) : QString();
    if (path.isEmpty())
        return;
    // The mark at the beginning has spreadsheets read it as UTF-8.
    const QByteArray table = "\xEF\xBB\xBF"
        + tarn::exported_translations(scene()->document(), scene()->translations()).toUtf8();
    if (const auto status = tarn::write_file_atomically(path, table); !status)
        tarn::boxes::error(this, status.message());
}

void CDlgTranslations::on_import()
{
    const QString path = scene() && is_editing() ? filedlg::pop_file_dlg(tables(), filedlg::mode_open, this)
                                                 : QString();
    if (path.isEmpty())
        return;
    const auto file = tarn::read_plain_file(path, largest_table);
    if (!file)
        return tarn::boxes::error(
            this, lang(u"无法读取 %1：%2", u"%1 cannot be read: %2").arg(path, file.status().message()));
    const auto imported = tarn::import_translations(scene()->document(), scene()->translations(), file.value());
    if (!imported)
        return tarn::boxes::error(
            this, lang(u"无法导入 %1：%2。", u"%1 cannot be imported: %2.").arg(path, imported.status().message()));
    QString told = lang(u"已导入译文：%1。", u"Texts taken: %1.").arg(imported.value().taken);
    if (const int left_out = imported.value().left_out; left_out > 0)
        told += lang(u"\n未导入的行：%1（第一个是第 %2 行）。界面中没有它们的对象、属性或原文。",
                     u"\nRows left out: %1, the first is row %2. The interface does not have their object, attribute "
                     u"or text.")
                    .arg(left_out)
                    .arg(imported.value().first_left_out);
    tarn::boxes::message(this, {.text = told, .title = {}});
}
