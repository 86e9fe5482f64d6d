#include "support/editor_fixture.h"

#include "frame/control_bar.h"
#include "frame/rollup.h"

#include <QApplication>
#include <QStyle>
#include <QTranslator>

namespace tarn::test {

namespace {

class PageWidth : public Editor, public testing::WithParamInterface<Language> {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_english.load(u":/gui_ui/i18n/tarn_en.qm"_s));
        VLCMsgIniW::set_language(GetParam());
        if (GetParam() == Language::English)
            QApplication::installTranslator(&m_english);
        start();
    }

    QTranslator m_english;
};

} // namespace

TEST_P(PageWidth, every_page_of_the_property_bar_fits_it)
{
    const QWidget& bar = *m_ui.control_bars().front();
    const int width = bar.sizeHint().width();
    const int scroll_bar = bar.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const auto pages = bar.findChildren<CChildDlg*>();
    EXPECT_GT(pages.size(), 10);
    for (const CChildDlg* page : pages) {
        bool scrolls = false;
        for (const QWidget* holder = page; holder; holder = holder->parentWidget())
            scrolls = scrolls || qobject_cast<const CRollupCtrl*>(holder);
        EXPECT_LE(page->minimumSizeHint().width(), scrolls ? width - scroll_bar : width)
            << page->page_name().toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, PageWidth, testing::Values(Language::Chinese, Language::English));

} // namespace tarn::test
