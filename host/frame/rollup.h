#pragma once

#include <QScrollArea>

#include <vector>

class CBaseWorld;
class CChildDlg;
class QToolButton;
class QVBoxLayout;

/// Pages under each other, each below a heading that folds it away; the whole scrolls.
class CRollupCtrl : public QScrollArea {
    Q_OBJECT

public:
    explicit CRollupCtrl(QWidget* parent = nullptr);

    /// Appends a page under the heading `title` and takes it over; answers its index.
    int InsertPage(const QString& title, CChildDlg* page);
    void ExpandPage(int index, bool expand);
    void ExpandAllPages(bool expand);
    bool is_expanded(int index) const;
    int page_count() const { return int(m_sections.size()); }
    CChildDlg* page(int index) const;
    /// What the user clicks to fold `page` away or out; null when the rollup does not hold it.
    QToolButton* heading_of(const CChildDlg* page) const;

private:
    struct Section {
        QToolButton* heading;
        CChildDlg* page;
    };

    QVBoxLayout* m_layout;
    std::vector<Section> m_sections;
};

/// A rollup that hands world and notification codes to its pages.
class CMyRollup : public CRollupCtrl {
    Q_OBJECT

public:
    using CRollupCtrl::CRollupCtrl;

    void on_world_created(CBaseWorld* world);
    void update_ui(int code);
};
