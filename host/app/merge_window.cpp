#include "merge_window.h"

#include "core/language.h"
#include "frame/boxes.h"

#include <QHeaderView>
#include <QJsonDocument>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace tarn {

namespace {

constexpr QSize usual_size(960, 600);
constexpr double share_of_screen = 0.9; ///< at most, with room for the frame
constexpr int list_part = 3;            ///< of the height, of five

enum Column : int { column_object, column_field, column_base, column_ours, column_theirs, column_taken };

QString shown(const QString& json)
{
    return json.isNull() ? lang(u"（无）", u"(nothing)") : json;
}

/// An object takes lines of its own for each of its attributes.
QString in_lines(const QString& json)
{
    const QJsonDocument object = QJsonDocument::fromJson(json.toUtf8());
    return object.isObject() ? QString::fromUtf8(object.toJson()).trimmed() : shown(json);
}

QString attribute_text(const MergeConflict& conflict)
{
    if (conflict.field.isEmpty())
        return lang(u"整个对象", u"all of it");
    return conflict.part.isEmpty() ? conflict.field : QStringLiteral("%1 [%2]").arg(conflict.field, conflict.part);
}

QPlainTextEdit* make_text(QWidget& window, const char* name, const QString& title)
{
    auto* text = new QPlainTextEdit(&window);
    text->setObjectName(QLatin1String(name));
    text->setAccessibleName(title);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    return text;
}

} // namespace

MergeWindow::MergeWindow(const std::vector<MergeConflict>& conflicts)
    : m_conflicts(conflicts),
      m_sides(conflicts.size(), MergeSide::Ours),
      m_list(new QTreeWidget(this)),
      m_base(make_text(*this, "base", lang(u"原来", u"Base"))),
      m_ours(make_text(*this, "ours", lang(u"我方", u"Ours"))),
      m_theirs(make_text(*this, "theirs", lang(u"对方", u"Theirs"))),
      m_take_ours(new QRadioButton(lang(u"取我方(&O)", u"Take &ours"), this)),
      m_take_theirs(new QRadioButton(lang(u"取对方(&T)", u"Take &theirs"), this))
{
    setObjectName(QStringLiteral("merge_window"));
    setWindowTitle(lang(u"合并：%1 处冲突", u"Merge: %1 conflicts").arg(conflicts.size()));
    auto* layout = new QVBoxLayout(this);
    make_list();
    layout->addWidget(m_list, list_part);
    layout->addLayout(make_versions(), 5 - list_part);
    layout->addLayout(make_buttons());
    m_list->setCurrentItem(m_list->topLevelItem(0));
    resize(usual_size.boundedTo(screen()->availableSize() * share_of_screen));
    m_list->setFocus();
}

void MergeWindow::make_list()
{
    m_list->setObjectName(QStringLiteral("conflicts"));
    m_list->setAccessibleName(lang(u"冲突", u"Conflicts"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setHeaderLabels({lang(u"对象", u"Object"), lang(u"属性", u"Attribute"), lang(u"原来", u"Base"),
                             lang(u"我方", u"Ours"), lang(u"对方", u"Theirs"), lang(u"采用", u"Taken")});
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(column_taken, QHeaderView::ResizeToContents);
    for (int i = 0; i < int(m_conflicts.size()); ++i) {
        const MergeConflict& conflict = m_conflicts[std::size_t(i)];
        new QTreeWidgetItem(m_list,
                            {conflict.place, attribute_text(conflict), shown(conflict.base), shown(conflict.ours),
                             shown(conflict.theirs)});
        show_side(i);
    }
    connect(m_list, &QTreeWidget::currentItemChanged, this, [this] { show_conflict(current()); });
    connect(m_list, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem*, int column) {
        if (column == column_ours || column == column_theirs)
            choose(column == column_ours ? MergeSide::Ours : MergeSide::Theirs);
    });
}

QLayout* MergeWindow::make_versions()
{
    auto* row = new QHBoxLayout;
    const auto add = [&](QWidget* heading, QPlainTextEdit* text) {
        auto* column = new QVBoxLayout;
        column->addWidget(heading);
        column->addWidget(text, 1);
        row->addLayout(column, 1);
    };
    auto* base = new QLabel(lang(u"原来", u"Base"), this);
    base->setMinimumHeight(m_take_ours->sizeHint().height()); // The texts begin side by side.
    add(base, m_base);
    add(m_take_ours, m_ours);
    add(m_take_theirs, m_theirs);
    connect(m_take_ours, &QRadioButton::clicked, this, [this] { choose(MergeSide::Ours); });
    connect(m_take_theirs, &QRadioButton::clicked, this, [this] { choose(MergeSide::Theirs); });
    return row;
}

QLayout* MergeWindow::make_buttons()
{
    auto* row = new QHBoxLayout;
    const auto add = [&](const char* name, const QString& text, auto run) {
        auto* button = new QPushButton(text, this);
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, run);
        row->addWidget(button);
    };
    add("all_ours", lang(u"全部取我方", u"All Ours"), [this] { choose_all(MergeSide::Ours); });
    add("all_theirs", lang(u"全部取对方", u"All Theirs"), [this] { choose_all(MergeSide::Theirs); });
    row->addStretch();
    add("ok", lang(u"确定", u"OK"), [this] { accept(); });
    add("cancel", lang(u"取消", u"Cancel"), [this] { reject(); });
    return row;
}

int MergeWindow::current() const
{
    return m_list->indexOfTopLevelItem(m_list->currentItem());
}

void MergeWindow::show_conflict(int index)
{
    if (index < 0)
        return;
    const MergeConflict& conflict = m_conflicts[std::size_t(index)];
    m_base->setPlainText(in_lines(conflict.base));
    m_ours->setPlainText(in_lines(conflict.ours));
    m_theirs->setPlainText(in_lines(conflict.theirs));
    const bool is_ours = m_sides[std::size_t(index)] == MergeSide::Ours;
    (is_ours ? m_take_ours : m_take_theirs)->setChecked(true);
}

/// What is taken stands out in the list.
void MergeWindow::show_side(int index)
{
    QTreeWidgetItem* row = m_list->topLevelItem(index);
    const bool is_ours = m_sides[std::size_t(index)] == MergeSide::Ours;
    QFont taken = m_list->font();
    taken.setBold(true);
    row->setFont(column_ours, is_ours ? taken : m_list->font());
    row->setFont(column_theirs, is_ours ? m_list->font() : taken);
    row->setText(column_taken, is_ours ? lang(u"我方", u"ours") : lang(u"对方", u"theirs"));
}

void MergeWindow::choose(MergeSide side)
{
    const int index = current();
    if (index < 0)
        return;
    m_sides[std::size_t(index)] = side;
    show_side(index);
    show_conflict(index);
}

void MergeWindow::choose_all(MergeSide side)
{
    for (int i = 0; i < int(m_sides.size()); ++i) {
        m_sides[std::size_t(i)] = side;
        show_side(i);
    }
    show_conflict(current());
}

std::optional<std::vector<MergeSide>> ask_in_window(const std::vector<MergeConflict>& conflicts)
{
    MergeWindow window(conflicts);
    return boxes::dialog(window) == QDialog::Accepted ? std::optional(window.sides()) : std::nullopt;
}

} // namespace tarn
