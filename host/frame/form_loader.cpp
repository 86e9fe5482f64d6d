#include "form_loader.h"

#include "core/language.h"
#include "dlg_group.h"
#include "rollup.h"
#include "text_edit.h"
#include "widgets/button_st.h"
#include "widgets/color_swatch.h"
#include "widgets/super_edit.h"

#include <QComboBox>
#include <QEvent>
#include <QFile>
#include <QTabBar>
#include <QUiLoader>

namespace tarn {

namespace {

constexpr int shortest_box = 6; ///< letters of a combo box that must be seen, unless its form says otherwise

/// Keeps the wheel from a combo box: it scrolls the page, and what passes under the mouse meanwhile stays as it is.
class WheelGuard : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() != QEvent::Wheel)
            return false;
        event->ignore(); // The page below gets it.
        return true;
    }
};

class Loader : public QUiLoader {
public:
    explicit Loader(const WidgetMaker& maker) : m_maker(maker)
    {
        // Captions are translated when the page is initialised, under the page's own name.
        setTranslationEnabled(false);
    }

    QWidget* createWidget(const QString& class_name, QWidget* parent, const QString& name) override
    {
        QWidget* widget = m_maker ? m_maker(class_name, parent) : nullptr;
        if (!widget && class_name == QLatin1String("CButtonST"))
            widget = new CButtonST(parent);
        if (!widget && class_name == QLatin1String("CColorSwatch"))
            widget = new CColorSwatch(parent);
        if (!widget && class_name == QLatin1String("CSuperEdit"))
            widget = new CSuperEdit(parent);
        if (!widget && class_name == QLatin1String("CMyRollup"))
            widget = new CMyRollup(parent);
        if (!widget && class_name == QLatin1String("CDlgGroup"))
            widget = new CDlgGroup(parent);
        if (!widget && class_name == QLatin1String("QPlainTextEdit"))
            widget = new TextEdit(parent);
        if (!widget && class_name == QLatin1String("QTabBar"))
            widget = new QTabBar(parent);
        if (!widget) {
            widget = QUiLoader::createWidget(class_name, parent, name);
            // One long entry shall not make a page wider than the bar that holds it.
            if (auto* box = qobject_cast<QComboBox*>(widget)) {
                box->setMinimumContentsLength(shortest_box);
                box->installEventFilter(new WheelGuard(box));
            }
            return widget;
        }
        widget->setObjectName(name);
        return widget;
    }

private:
    const WidgetMaker& m_maker;
};

} // namespace

Result<QWidget*> load_form(const QString& path, QWidget* parent, const WidgetMaker& maker)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Status::error(
            lang(u"界面模板 %1 无法读取：%2", u"The form %1 cannot be read: %2").arg(path, file.errorString()));
    Loader loader(maker);
    if (QWidget* form = loader.load(&file, parent))
        return form;
    return Status::error(lang(u"界面模板 %1 有误：%2", u"The form %1 is faulty: %2").arg(path, loader.errorString()));
}

} // namespace tarn
