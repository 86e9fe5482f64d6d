#include "table_page.h"

namespace tarn {

namespace {

class TablePage : public CBoundPage {
public:
    explicit TablePage(const PageEntry& entry)
        : CBoundPage(QString::fromLatin1(entry.class_name), *entry.target), m_entry(entry)
    {
    }

protected:
    void OnInitDialog() override
    {
        CBoundPage::OnInitDialog();
        bind(m_entry.rows);
        bind_scripts(m_entry.scripts);
        bind_images(m_entry.images, m_entry.set_image);
        bind_actions(m_entry.actions);
        bind_menus(m_entry.menus);
        bind_objects(m_entry.objects);
    }

private:
    const PageEntry& m_entry;
};

} // namespace

CBoundPage* make_page(const PageEntry& entry, QWidget* parent)
{
    CBoundPage* page = entry.make ? entry.make() : new TablePage(entry);
    page->Create(entry.template_id, parent);
    return page;
}

} // namespace tarn
