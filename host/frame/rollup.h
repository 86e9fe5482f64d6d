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
    /// While something is searched for, what is found unfolds and all else is gone with its heading. With `unfold` what
    /// was found before unfolds, too. Afterwards the pages are folded as they were.
    enum class Filtered { No, In, Out };
    void filter_page(int index, Filtered filtered, bool unfold);
    int page_count() const { return int(m_sections.size()); }
    CChildDlg* page(int index) const;
    /// What the user clicks to fold `page` away or out; null when the rollup does not hold it.
    QToolButton* heading_of(const CChildDlg* page) const;

private:
    struct Section {
        QToolButton* heading;
        CChildDlg* page;
        Filtered filtered = Filtered::No;
        bool was_expanded = false; ///< before it was filtered
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
