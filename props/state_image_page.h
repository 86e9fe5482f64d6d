#pragma once

#include "page_base/bound_page.h"

/// A page for controls that show one of several pictures, and that can take on a picture's size.
class CStateImagePage : public CBoundPage {
    Q_OBJECT

protected:
    using CBoundPage::CBoundPage;

    /// A click on `size_button` gives each selected control the size of the first picture that it has in the order of
    /// `rows`, which have to stay where they are.
    void bind_state_images(std::span<const tarn::ImageRow> rows, tarn::SetImage set, int size_button);
    void refresh() override;

private:
    QSize picture_size(const tarn::ModelObject& control) const;
    void size_to_pictures();

    std::span<const tarn::ImageRow> m_state_images;
    int m_size_button = 0;
};
