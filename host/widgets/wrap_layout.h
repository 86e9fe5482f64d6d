#pragma once

#include <QLayout>

#include <memory>
#include <vector>

/// Lays items out in a row and begins another row where they do not fit. A separator (a QFrame that is a vertical
/// line) is shown only between two items of one row.
class WrapLayout : public QLayout {
    Q_OBJECT

public:
    explicit WrapLayout(QWidget* parent = nullptr) : QLayout(parent) {}
    ~WrapLayout() override;

    void addItem(QLayoutItem* item) override;
    int count() const override { return int(m_items.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;

    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    /// Of all items in one row.
    QSize sizeHint() const override;
    /// Of the largest item.
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    struct Row {
        std::vector<QLayoutItem*> items;
        int width = 0;
        int height = 0;
    };

    std::vector<Row> rows(int width) const;
    QSize with_margins(QSize size) const;

    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};

/// Lets what stands in a row in `form` go over several rows where there is no room for one.
void wrap_items_of(QWidget& form);
